// A fuzzer without its engine: runs the inputs of the folders and files that are named, in the order of their
// names. With it every compiler and sanitizer runs what the fuzzers have collected, and a find can be
// debugged. usage: <fuzzer>_replay FOLDER_OR_FILE...

#include "fuzzing.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

namespace {

std::vector<std::filesystem::path> Inputs(const std::filesystem::path& path)
{
    if (!std::filesystem::is_directory(path))
        return {path};
    std::vector<std::filesystem::path> inputs;
    for (const auto& entry : std::filesystem::directory_iterator(path))
        inputs.push_back(entry.path());
    std::sort(inputs.begin(), inputs.end());
    return inputs;
}

} // namespace

int main(int argc, char** argv)
{
    LLVMFuzzerInitialize(&argc, &argv);
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        for (const std::filesystem::path& path : Inputs(argv[i])) {
            std::ifstream stream(path, std::ios::binary);
            if (!stream) {
                std::fprintf(stderr, "%s cannot be read\n", path.c_str());
                return 1;
            }
            const std::vector<char> bytes((std::istreambuf_iterator<char>(stream)), {});
            std::fprintf(stderr, "%s\n", path.filename().c_str());
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
            ++count;
        }
    }
    std::printf("%d inputs\n", count);
    return count > 0 ? 0 : 1; // no inputs would look like success
}
