#include "buildcommand.h"
#include "cuttablecommand.h"
#include "interruptguard.h"
#include "record/usageerror.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <csignal>
#include <exception>
#include <filesystem>
#include <iostream>
#include <new>
#include <string>

namespace {

constexpr int EXIT_FAILED = 1; ///< the library rejects the mode, or a file cannot be written
constexpr int EXIT_USAGE = 2;  ///< a wrong option, value or mode file

/// One line whatever was in the names and values that the user gave.
void Error_Print(std::string text)
{
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; };
    std::replace_if(text.begin(), text.end(), isControl, ' ');
    std::cerr << "dotweave: " << text << std::endl;
}

int Command_Run(int argc, char** argv)
{
    CLI::App app("Builds pass masks for multi-pass inkjet printing.");
    app.name("dotweave");
    app.set_version_flag("--version", "dotweave " DOTWEAVE_VERSION, "Print the version and exit");
    app.require_subcommand(0, 1); // none is refused below, by a message of our own
    const CBuildCommand build(app);
    const CCutTableCommand cutTable(app);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& success) { // --help, --version
        return app.exit(success);
    } catch (const CLI::ParseError& error) {
        throw CUsageError(std::string(error.what()) + "; dotweave --help tells more");
    }
    if (build.IsChosen())
        return build.Run(std::cout, std::cerr);
    if (cutTable.IsChosen())
        return cutTable.Run(std::cout, std::cerr);
    throw CUsageError("a command is needed: build or cuttable; dotweave --help tells more");
}

} // namespace

int main(int argc, char** argv)
{
    int interruptSignal = 0;
    try {
        return Command_Run(argc, argv);
    } catch (const CUsageError& error) {
        Error_Print(error.what());
        return EXIT_USAGE;
    } catch (const CInterrupted& interrupted) {
        interruptSignal = interrupted.Signal();
    } catch (const std::filesystem::filesystem_error& error) {
        Error_Print(error.path1().string() + ": " + error.code().message());
    } catch (const std::bad_alloc&) {
        Error_Print("not enough memory for this mode");
    } catch (const std::exception& error) {
        Error_Print(error.what());
    }
    if (interruptSignal != 0)
        static_cast<void>(
            std::raise(interruptSignal)); // nothing is half-made any more: end as the signal asks
    return EXIT_FAILED;
}
