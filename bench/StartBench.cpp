// Start-up of tavrin-cli against that of exrheader, which also reads a header with the OpenEXR
// library.
//
//     start-bench [--benchmark_... options] TAVRIN_CLI IMAGE

#include "bench/PairedRuns.h"

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Command = std::vector<std::string>;

/// Runs a program to its end, without a shell, its output thrown away.
void run(const Command& command) {
    std::vector<char*> arguments;
    for (const std::string& argument : command) {
        arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    const int failure =
        posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    if (failure != 0 || waitpid(child, &status, 0) != child || status != 0) {
        throw std::runtime_error("\"" + command[0] + "\" cannot be run.");
    }
}

void bench(benchmark::State& state, const Command& ours, const Command& baseline) {
    constexpr double kBudget = 3.0;
    tavrin::bench::runPaired(
        state, kBudget, [&ours] { run(ours); }, [&baseline] { run(baseline); });
}

}  // namespace

int main(int argumentCount, char** arguments) {
    benchmark::Initialize(&argumentCount, arguments);
    if (argumentCount != 3) {
        std::cerr << "The path of tavrin-cli and an image are expected.\n";
        return 2;
    }
    const std::string cli = arguments[1];
    const std::string image = arguments[2];
    const auto add = [&](const char* name, const Command& ours) {
        benchmark::RegisterBenchmark(name, bench, ours, Command{"exrheader", image})
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond)
            ->Iterations(tavrin::bench::getPairCount(201));
    };
    add("start/version", {cli, "--version"});
    add("start/info", {cli, image, "--info"});
    try {
        benchmark::RunSpecifiedBenchmarks();
        return 0;
    } catch (const std::exception& exception) {
        std::cerr << exception.what() << '\n';
        return 1;
    }
}
