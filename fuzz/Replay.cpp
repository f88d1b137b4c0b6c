// Gives a target the files of some folders, and each of their beginnings, as a program of its own:
// for compilers without libFuzzer.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::vector<std::filesystem::path> filesOf(const char* folder)
{
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

std::string contentsOf(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

void replay(const std::filesystem::path& file)
{
    const std::string contents = contentsOf(file);
    for (std::size_t size = 0; size <= contents.size(); ++size) {
        // A copy that ends where the input does, so that reading on is noticed.
        const std::vector<std::uint8_t> input(contents.begin(),
                                              contents.begin() + static_cast<std::ptrdiff_t>(size));
        LLVMFuzzerTestOneInput(input.data(), input.size());
    }
}

} // namespace

int main(int count, char** arguments)
{
    std::size_t replayed = 0;
    for (int i = 1; i < count; ++i)
        for (const std::filesystem::path& file : filesOf(arguments[i])) {
            std::cerr << file.string() << std::endl; // the last one is the one that broke it
            try {
                replay(file);
            } catch (const std::exception& failure) {
                std::cerr << "threw: " << failure.what() << std::endl;
                return 1;
            }
            ++replayed;
        }
    if (replayed == 0)
        std::cerr << "there is nothing to replay\n";
    return replayed == 0 ? 1 : 0;
}
