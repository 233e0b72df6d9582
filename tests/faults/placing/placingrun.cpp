#include "placingrun.h"

#include "console.h"
#include "fileerror.h"
#include "interruptguard.h"
#include "maskoutput.h"
#include "stagedfiles.h"
#include "temporarydirectory.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <exception>
#include <sstream>
#include <stdexcept>

namespace fs = std::filesystem;
using namespace dotweave;

#if defined(DOTWEAVE_COVERAGE)
extern "C" void __gcov_dump(); // NOLINT(bugprone-reserved-identifier): given
static void Coverage_Keep()
{
    __gcov_dump();
}
#else
static void Coverage_Keep() {}
#endif

namespace {

/// Writes the files under a plan. @return the report: calls, planned function and message, a line each
std::string Run(const CMaskData_Base& mask, const fs::path& folder, const SDiskPlan& plan, int& signal)
{
    std::string message;
    std::ostringstream texts;
    CConsole console(texts, texts, false);
    const CDiskFaults faults(plan);
    try {
        MaskOutput_Write(mask, folder, MaskPictures_First, console);
    } catch (const CInterrupted& interrupted) {
        signal = interrupted.Signal();
    } catch (const fs::filesystem_error& error) {
        message = CFileError(error.path1(), error.code().message()).what();
    } catch (const std::exception& error) {
        message = error.what();
    }
    return std::to_string(CDiskFaults::CallCount()) + '\n' + CDiskFaults::FaultyFunction() + '\n' + message +
           '\n';
}

} // namespace

CPlacingRun::CPlacingRun(const CMaskData_Base& mask, const fs::path& folder, const SDiskPlan& plan)
{
    std::array<int, 2> pipeEnds{};
    if (pipe(pipeEnds.data()) != 0)
        throw std::runtime_error("no pipe");
    static_cast<void>(std::fflush(nullptr)); // so that nothing is printed twice
    m_process = fork();
    if (m_process == 0) {
        int signal = 0;
        const std::string report = Run(mask, folder, plan, signal);
        static_cast<void>(!write(pipeEnds[1], report.data(), report.size()));
        Coverage_Keep();
        if (signal != 0)
            static_cast<void>(raise(signal)); // as the command ends
        _exit(0);
    }
    close(pipeEnds[1]);
    m_report = pipeEnds[0];
}

CPlacingRun::~CPlacingRun()
{
    if (m_report >= 0)
        Wait();
}

SRunEnd CPlacingRun::Wait()
{
    std::string report;
    std::array<char, 4096> part{};
    for (ssize_t count = 0; (count = read(m_report, part.data(), part.size())) > 0;)
        report.append(part.data(), static_cast<std::size_t>(count));
    close(m_report);
    m_report = -1;
    int status = 0;
    EXPECT_EQ(waitpid(m_process, &status, 0), m_process);
    SRunEnd end;
    end.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    if (end.signal == 0) {
        EXPECT_EQ(WEXITSTATUS(status), 0);
    }
    std::istringstream lines(report);
    lines >> end.callCount;
    lines.ignore();
    std::getline(lines, end.function);
    std::getline(lines, end.message);
    end.isGood = end.signal == 0 && end.message.empty();
    return end;
}

SFolder SFolder::Read(const fs::path& folder)
{
    SFolder content;
    if (!fs::exists(folder))
        return content;
    for (const std::string& name : Directory_Names(folder)) {
        if (fs::is_directory(folder / name)) {
            EXPECT_EQ(name.rfind(".dotweave-", 0), 0U) << name;
            ++content.hiddenCount;
            content.hasReady |= name == ".dotweave-ready";
        } else {
            content.files[name] = File_Read(folder / name);
        }
    }
    return content;
}

void NextRun_Begin(const fs::path& folder)
{
    const CStagedFiles nextRun(folder);
}
