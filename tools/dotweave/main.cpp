#include "buildcommand.h"
#include "cuttablecommand.h"
#include "diskaccess.h"
#include "exitstatus.h"
#include "fileerror.h"
#include "interruptguard.h"
#include "outputfile.h"
#include "record/recorderror.h"
#include "record/textquote.h"
#include "usageerror.h"

#include <dotweave/version.h>

#include <CLI/CLI.hpp>

#include <csignal>
#include <exception>
#include <filesystem>
#include <iostream>
#include <new>
#include <sstream>
#include <string>

namespace dotweave {

namespace {

/// @return what goes to standard output
std::string Command_Run(int argc, char** argv)
{
    CLI::App app("Builds pass masks for multi-pass inkjet printing.");
    app.name("dotweave");
    app.set_version_flag("--version", std::string("dotweave ") + dotweave_version(),
                         "Print the version and exit");
    app.require_subcommand(0, 1); // none is refused below, with our own message
    const CBuildCommand build(app);
    const CCutTableCommand cutTable(app);
    std::ostringstream out;
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& success) { // --help, --version
        app.exit(success, out, out);
        return out.str();
    } catch (const CLI::ParseError& error) {
        throw CUsageError(Text_Quote(error.what()) + "; dotweave --help tells more");
    }
    if (build.IsChosen())
        build.Run(out, std::cerr);
    else if (cutTable.IsChosen())
        cutTable.Run(out, std::cerr);
    else
        throw CUsageError("a command is needed: build or cuttable; dotweave --help tells more");
    return out.str();
}

/// A full or closed standard output is an error like any other.
void StandardOutput_Write(const std::string& text)
{
    COutputFile output("-");
    output.Write(text.data(), text.size());
    output.Close();
}

int Error_Print(EExitStatus status, const std::string& text)
{
    std::cerr << "dotweave: " << text << std::endl;
    return status;
}

} // namespace

} // namespace dotweave

int main(int argc, char** argv)
{
    using namespace dotweave;
    StandardStreams_Occupy();
    int interruptSignal = 0;
    try {
        StandardOutput_Write(Command_Run(argc, argv));
        return ExitStatus_Good;
    } catch (const CUsageError& error) {
        return Error_Print(ExitStatus_Usage, error.what());
    } catch (const CRecordError& error) {
        return Error_Print(ExitStatus_Usage, error.what());
    } catch (const CModeNotBuilt& error) {
        return Error_Print(ExitStatus_ModeNotBuilt, error.what());
    } catch (const std::bad_alloc&) {
        return Error_Print(ExitStatus_ModeNotBuilt, "not enough memory for this mode");
    } catch (const CInterrupted& interrupted) {
        interruptSignal = interrupted.Signal();
    } catch (const std::filesystem::filesystem_error& error) {
        return Error_Print(ExitStatus_InputOutput, CFileError(error.path1(), error.code().message()).what());
    } catch (const std::exception& error) {
        return Error_Print(ExitStatus_InputOutput, error.what());
    }
    static_cast<void>(std::raise(interruptSignal)); // nothing is half-made any more: end as the signal asks
    return ExitStatus_InputOutput;
}
