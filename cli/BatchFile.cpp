#include "cli/BatchFile.h"

#include "cli/CommandLine.h"
#include "foundation/Exception.h"
#include "foundation/Json.h"

#include <algorithm>

namespace tavrin::cli {
namespace {

using Arguments = std::vector<std::string>;

constexpr const char* kInputs = "inputs";
constexpr const char* kName = "name";

String quote(const std::string& text) {
    return "\"" + String::fromUtf8(text) + "\"";
}

std::string toText(const std::string& member, const Json& value, const char* expected = "a text") {
    if (!value.is_string()) {
        throw Exception(quote(member) + " expects " + expected + ".");
    }
    const auto& text = value.get_ref<const std::string&>();
    if (text.find('\0') != std::string::npos) {
        throw Exception(quote(member) + " has a text with a zero character.");
    }
    return text;
}

/// A text, a number or a switch, or a list of them separated by commas.
std::string toList(const std::string& member, const Json& value) {
    if (value.is_number() || value.is_boolean()) {
        return value.dump();
    }
    if (!value.is_array()) {
        return toText(member, value, "a text, a number, true, false or a list of them");
    }
    std::string list;
    for (const Json& item : value) {
        if (item.is_structured()) {
            throw Exception(quote(member) + " has a list within a list.");
        }
        list += (list.empty() ? "" : ",") + toList(member, item);
    }
    return list;
}

/// The texts of a text or a list of texts; `expected` is said of anything else.
Arguments toTexts(const std::string& member, const Json& value, const char* expected) {
    if (!value.is_array()) {
        return {toText(member, value, expected)};
    }
    Arguments texts;
    for (const Json& item : value) {
        texts.push_back(toText(member, item, expected));
    }
    return texts;
}

/// The values of an option that can be repeated: KEY=VALUE texts, or the members of an object.
Arguments toAssignments(const std::string& member, const Json& value) {
    if (!value.is_object()) {
        return toTexts(member, value, "an object, or texts such as \"name=value\"");
    }
    Arguments assignments;
    for (const auto& [key, item] : value.items()) {
        assignments.push_back(toText(member, Json(key)) + "=" + toList(key, item));
    }
    return assignments;
}

Arguments getValues(const OptionDescription& option, const std::string& member, const Json& value) {
    if (option.isRepeatable) {
        return toAssignments(member, value);
    }
    const bool isList = option.value.contains(",");
    return {isList ? toList(member, value) : toText(member, value)};
}

void addOption(const OptionDescription& option, const std::string& member, const Json& value,
               Arguments& arguments) {
    const std::string argument = "--" + member;
    if (!option.value.isEmpty()) {
        for (const std::string& text : getValues(option, member, value)) {
            arguments.insert(arguments.end(), {argument, text});
        }
        return;
    }
    if (!value.is_boolean()) {
        throw Exception(quote(member) + " expects true or false.");
    }
    if (value.get<bool>()) {
        arguments.push_back(argument);
    }
}

/// The members of a job with those defaults that it does not have, without what is null.
Json addDefaults(const Json& job, const Json& defaults) {
    Json members = job;
    for (const auto& [name, value] : defaults.items()) {
        if (!members.contains(name)) {
            members[name] = value;
        }
    }
    Json given = Json::object();
    for (const auto& [name, value] : members.items()) {
        if (!value.is_null()) {
            given[name] = value;
        }
    }
    return given;
}

Arguments toArguments(const Json& job, const std::vector<OptionDescription>& options) {
    Arguments arguments;
    Arguments inputs;
    for (const auto& [member, value] : job.items()) {
        if (member == kName) {
            continue;
        }
        if (member == kInputs) {
            inputs = toTexts(member, value, "a text or a list of texts");
            continue;
        }
        const auto option =
            std::ranges::find(options, String::fromUtf8(member), &OptionDescription::name);
        if (option == options.end()) {
            throw Exception(quote(member) + " is no member of a job.");
        }
        addOption(*option, member, value, arguments);
    }
    // Names of files may begin like options.
    arguments.push_back("--");
    arguments.insert(arguments.end(), inputs.begin(), inputs.end());
    return arguments;
}

BatchJob readJob(const Json& job, const Json& defaults,
                 const std::vector<OptionDescription>& options) {
    BatchJob read;
    try {
        if (!job.is_object()) {
            throw Exception("A job has to be an object.");
        }
        if (job.contains(kName)) {
            read.name = String::fromUtf8(toText(kName, job[kName]));
        }
        read.arguments = toArguments(addDefaults(job, defaults), options);
    } catch (const Exception& exception) {
        read.arguments = Failure(exception.message());
    }
    return read;
}

}  // namespace

Result<std::vector<BatchJob>> readBatchText(const String& text) {
    const Result<Json> file = parseJson(text);
    if (!file) {
        return Failure(file.error());
    }
    if (!file->is_object() || !file->contains("jobs") || !file->at("jobs").is_array()) {
        return Failure("An object with a list \"jobs\" is expected.");
    }
    for (const auto& [member, value] : file->items()) {
        if (member != "jobs" && member != "defaults") {
            return Failure(quote(member) + " is no member of it; \"jobs\" and \"defaults\" are.");
        }
    }
    const Json defaults = file->value("defaults", Json::object());
    if (!defaults.is_object()) {
        return Failure("\"defaults\" has to be an object.");
    }
    const std::vector<OptionDescription> options = describeWorkOptions();
    std::vector<BatchJob> jobs;
    for (const Json& job : file->at("jobs")) {
        jobs.push_back(readJob(job, defaults, options));
    }
    if (jobs.empty()) {
        return Failure("It has no jobs.");
    }
    return jobs;
}

}  // namespace tavrin::cli
