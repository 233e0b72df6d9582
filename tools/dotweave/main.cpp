#include "commandline.h"
#include "console.h"
#include "diskaccess.h"
#include "exitstatus.h"
#include "fileerror.h"
#include "interruptguard.h"
#include "maskcreation.h"
#include "outputfile.h"
#include "record/recorderror.h"
#include "terminal.h"
#include "usageerror.h"

#include <csignal>
#include <exception>
#include <filesystem>
#include <iostream>
#include <new>
#include <sstream>
#include <string>

namespace dotweave {

namespace {

/// A full or closed standard output is an error like any other.
void StandardOutput_Write(const std::string& text)
{
    COutputFile output("-");
    output.Write(text.data(), text.size());
    output.Close();
}

EExitStatus Command_Run(int argc, char** argv, CConsole& console)
{
    CCommandLine commandLine;
    const CCommand* command = commandLine.Parse(argc, argv, console);
    if (command == nullptr)
        return ExitStatus_Good;
    console.Quiet_Set(command->IsQuiet());
    return command->Run(console);
}

} // namespace

} // namespace dotweave

int main(int argc, char** argv)
{
    using namespace dotweave;
    StandardStreams_Occupy();
    std::ostringstream out; // shown when the run has succeeded
    CConsole console(out, std::cerr, Terminal_IsWatched());
    const auto failed = [&console](EExitStatus status, const std::string& text) {
        console.Error_Print(text);
        return status;
    };
    int interruptSignal = 0;
    try {
        const EExitStatus status = Command_Run(argc, argv, console);
        StandardOutput_Write(out.str());
        return status;
    } catch (const CUsageError& error) {
        return failed(ExitStatus_Usage, error.what());
    } catch (const CRecordError& error) {
        return failed(ExitStatus_Usage, error.what());
    } catch (const CModeNotBuilt& error) {
        return failed(ExitStatus_ModeNotBuilt, error.what());
    } catch (const std::bad_alloc&) {
        return failed(ExitStatus_ModeNotBuilt, "not enough memory for this mode");
    } catch (const CInterrupted& interrupted) {
        interruptSignal = interrupted.Signal();
    } catch (const std::filesystem::filesystem_error& error) {
        return failed(ExitStatus_InputOutput, CFileError(error.path1(), error.code().message()).what());
    } catch (const std::exception& error) {
        return failed(ExitStatus_InputOutput, error.what());
    }
    static_cast<void>(std::raise(interruptSignal)); // nothing is half-made any more: end as the signal asks
    return ExitStatus_InputOutput;
}
