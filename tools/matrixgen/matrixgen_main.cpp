#include "levelfile.h"
#include "thresholdmatrix.h"

#include <CLI/CLI.hpp>

#include <cstdint>
#include <cstdio>
#include <exception>
#include <iostream>
#include <limits>
#include <string>

namespace {

constexpr int EXIT_OK = 0;
constexpr int EXIT_FAILED = 1; ///< the matrix could not be made or written
constexpr int EXIT_USAGE = 2;  ///< a wrong value or option

/// A whole number within a range; the message names the value and the range.
CLI::Validator Number_InRange(std::uint64_t first, std::uint64_t last, std::uint64_t multipleOf)
{
    const std::string range = std::to_string(first) + " to " + std::to_string(last) +
                              (multipleOf > 1 ? ", a multiple of " + std::to_string(multipleOf) : "");
    const auto check = [=](const std::string& text) {
        std::uint64_t value = 0;
        const bool isNumber = !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
        if (isNumber && CLI::detail::lexical_cast(text, value) && value >= first && value <= last &&
            value % multipleOf == 0)
            return std::string();
        return "\"" + text + "\" is not a whole number from " + range;
    };
    return {check, range, "range"};
}

int Run(int argc, char** argv)
{
    CLI::App app(
        "Makes a base threshold matrix: a dispersed ranking of the cells of a square torus, quantised\n"
        "to levels 0 to 65534. The file holds size x size cells, row by row, each 16 bits, low byte\n"
        "first. The same seed and size give the same file. Takes some seconds for 544 cells a side.");
    std::uint64_t seed = 1;
    int size = 544;
    std::string out;
    app.add_option("--seed", seed, "Seed of the random sequence, no unit")
        ->check(Number_InRange(0, std::numeric_limits<std::uint64_t>::max(), 1))
        ->capture_default_str();
    app.add_option("--size", size, "Side of the matrix, cells")
        ->check(Number_InRange(matrixgen::MATRIX_SIDE_MIN, matrixgen::MATRIX_SIDE_MAX, 2))
        ->capture_default_str();
    app.add_option("--out", out, "File to write; an existing one is replaced")->required();

    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& success) { // --help
        return app.exit(success);
    } catch (const CLI::ParseError& error) {
        std::cerr << "matrixgen: " << error.what() << '\n';
        return EXIT_USAGE;
    }
    matrixgen::LevelFile_Write(out, matrixgen::ThresholdMatrix_Make(size, seed));
    return EXIT_OK;
}

} // namespace

int main(int argc, char** argv)
{
    try {
        return Run(argc, argv);
    } catch (const std::exception& error) {
        (void)std::fprintf(stderr, "matrixgen: %s\n", error.what()); // a stream could throw again
        return EXIT_FAILED;
    }
}
