// Writes the inputs to start from, a folder for each target: write_seeds DIRECTORY

#include "fuzz/FuzzTargets.h"
#include "tests/support/ScratchDirectory.h"

#include <exception>
#include <filesystem>
#include <iostream>

int main(int count, char** arguments) {
    if (count != 2) {
        std::cerr << "Usage: write_seeds DIRECTORY\n";
        return 1;
    }
    try {
        for (const quillon::fuzz::FuzzTarget& target : quillon::fuzz::fuzzTargets()) {
            const std::filesystem::path directory = std::filesystem::path(arguments[1]) / target.name;
            std::filesystem::create_directories(directory);
            int number = 0;
            for (const std::string& seed : quillon::fuzz::seedsOf(target)) {
                quillon::support::writeBytes(directory / std::to_string(++number), seed);
            }
        }
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << "\n";
        return 1;
    }
}
