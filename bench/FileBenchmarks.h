#pragma once

#include "foundation/Exception.h"
#include "foundation/Scheduler.h"

#include <ImfThreading.h>
#include <benchmark/benchmark.h>

#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

namespace tavrin::bench {

/// The main function of a program that measures with the files named on its command line or,
/// without any, with those that writeOwnFiles() writes, which are removed afterwards.
template <class WriteOwnFiles, class Register>
int runFileBenchmarks(int argumentCount, char** arguments, const WriteOwnFiles& writeOwnFiles,
                      const Register& registerBenchmarks) {
    benchmark::Initialize(&argumentCount, arguments);
    Imf::setGlobalThreadCount(Scheduler::getThreadCount());
    try {
        const std::vector<std::string> named(arguments + 1, arguments + argumentCount);
        const std::vector<std::string> own =
            named.empty() ? writeOwnFiles() : std::vector<std::string>();
        registerBenchmarks(named.empty() ? own : named);
        benchmark::RunSpecifiedBenchmarks();
        for (const std::string& file : own) {
            std::filesystem::remove(file);
        }
        return 0;
    } catch (const std::exception& exception) {
        std::cerr << exceptionToString(exception).toUtf8() << '\n';
        return 1;
    }
}

}  // namespace tavrin::bench
