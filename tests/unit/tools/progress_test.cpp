#include "progress.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <mutex>
#include <sstream>
#include <streambuf>
#include <string>

using namespace dotweave;

namespace {

/// Standard error that says when the first text has come.
class CWatchedText : public std::streambuf {
public:
    void FirstText_Await() { m_first.get_future().wait(); }
    std::string Text()
    {
        const std::lock_guard lock(m_mutex);
        return m_text;
    }

protected:
    int_type overflow(int_type c) override
    {
        const std::lock_guard lock(m_mutex);
        m_text += traits_type::to_char_type(c);
        return c;
    }
    int sync() override // the line is complete
    {
        if (!m_isFirstSeen)
            m_first.set_value();
        m_isFirstSeen = true;
        return 0;
    }

private:
    std::mutex m_mutex;
    std::promise<void> m_first;
    std::string m_text;
    bool m_isFirstSeen = false;
};

} // namespace

TEST(ProgressText, SaysHowFarAndHowLong)
{
    EXPECT_EQ(Progress_Text("pictures", 0, 480, 0.5), "pictures: 0 of 480, 0 %");
    EXPECT_EQ(Progress_Text("pictures", 120, 480, 3.0), "pictures: 120 of 480, 25 %, about 9 s left");
    EXPECT_EQ(Progress_Text("pictures", 1, 480, 1.0), "pictures: 1 of 480, 0 %, about 7 min 59 s left");
    EXPECT_EQ(Progress_Text("pictures", 479, 480, 479.0), "pictures: 479 of 480, 99 %, about 1 s left");
    EXPECT_EQ(Progress_Text("pictures", 480, 480, 480.0), "pictures: 480 of 480, 100 %");
    EXPECT_EQ(Progress_Text("building the masks", 0, 0, 61.9), "building the masks: 1 min 1 s");
}

TEST(Progress, IsALineThatGoesAgain)
{
    CWatchedText text;
    std::ostream errors(&text);
    std::ostringstream out;
    CConsole console(out, errors, true);
    {
        CProgress progress(console, "pictures", 4, std::chrono::milliseconds(0));
        text.FirstText_Await();
    }
    const std::string shown = text.Text();
    EXPECT_EQ(shown.rfind("\r\x1B[Kpictures: 0 of 4, 0 %", 0), 0U) << shown;
    EXPECT_EQ(shown.substr(shown.rfind('\r')), "\r\x1B[K");
    EXPECT_EQ(shown.find('\n'), std::string::npos);
    EXPECT_EQ(out.str(), "");
}

TEST(Progress, OfAShortStepIsSilent)
{
    std::ostringstream out, errors;
    CConsole console(out, errors, true);
    {
        CProgress progress(console, "pictures", 4, std::chrono::hours(1));
        progress.Done_Add(4);
    }
    EXPECT_EQ(errors.str(), "");
}

TEST(Progress, IsSilentWithoutATerminalAndWhenQuiet)
{
    for (const bool isTerminal : {false, true}) {
        std::ostringstream out, errors;
        CConsole console(out, errors, isTerminal);
        console.Quiet_Set(isTerminal);
        EXPECT_FALSE(console.IsProgressShown());
        {
            CProgress progress(console, "pictures", 4, std::chrono::milliseconds(0));
        }
        EXPECT_EQ(errors.str(), "");
    }
}
