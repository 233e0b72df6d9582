#include "toolprocess.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <iterator>
#include <sstream>

namespace {

constexpr char OUT_FILE[] = "out";
constexpr char ERR_FILE[] = "err";
constexpr mode_t FILE_MODE = 0600;
constexpr int FILE_FLAGS = O_WRONLY | O_CREAT | O_TRUNC;

} // namespace

CToolProcess::CToolProcess(const std::vector<std::string>& command)
{
    std::vector<std::string> texts = command;
    std::vector<char*> arguments;
    arguments.reserve(texts.size() + 1);
    for (std::string& text : texts)
        arguments.push_back(text.data());
    arguments.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, m_outputs.Sub(OUT_FILE).c_str(), FILE_FLAGS,
                                     FILE_MODE);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, m_outputs.Sub(ERR_FILE).c_str(), FILE_FLAGS,
                                     FILE_MODE);
    const int error = posix_spawn(&m_process, texts[0].c_str(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) {
        m_process = 0;
        ADD_FAILURE() << texts[0] << " cannot be started";
    }
}

CToolProcess::~CToolProcess()
{
    if (m_process == 0)
        return;
    Signal(SIGKILL);
    Collect(0);
}

void CToolProcess::Signal(int signal) const
{
    if (m_process != 0 && kill(m_process, signal) != 0)
        ADD_FAILURE() << "signal " << signal << " cannot be sent";
}

bool CToolProcess::IsEnded()
{
    Collect(WNOHANG);
    return m_process == 0;
}

std::string CToolProcess::ErrorText() const
{
    return File_Read(m_outputs.Sub(ERR_FILE));
}

SToolResult CToolProcess::Wait()
{
    Collect(0);
    SToolResult result;
    if (WIFEXITED(m_status))
        result.exitStatus = WEXITSTATUS(m_status);
    else if (WIFSIGNALED(m_status))
        result.signal = WTERMSIG(m_status);
    result.out = File_Read(m_outputs.Sub(OUT_FILE));
    result.err = ErrorText();
    return result;
}

void CToolProcess::Collect(int flags)
{
    if (m_process != 0 && waitpid(m_process, &m_status, flags) == m_process)
        m_process = 0;
}

std::vector<std::string> Tool_Command(const std::string& words, const std::vector<std::string>& more)
{
    std::istringstream stream(words);
    std::vector<std::string> command = {DOTWEAVE_TOOL};
    command.insert(command.end(), std::istream_iterator<std::string>(stream), {});
    command.insert(command.end(), more.begin(), more.end());
    return command;
}

SToolResult Tool_Run(const std::string& words, const std::vector<std::string>& more)
{
    return CToolProcess(Tool_Command(words, more)).Wait();
}

SToolResult Tool_RunIn(const std::string& script, const std::string& words,
                       const std::vector<std::string>& more)
{
    std::vector<std::string> command = {"/bin/sh", "-c", script};
    const std::vector<std::string> tool = Tool_Command(words, more);
    command.insert(command.end(), tool.begin(), tool.end());
    return CToolProcess(command).Wait();
}
