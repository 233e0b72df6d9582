#pragma once

#include "placingrun.h"
#include "temporarydirectory.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <utility>

/// A result folder with somebody else's file in it, and masks of one, two and three colours to write there.
/// Each colour has a picture, so that results retire files of each other.
class PlacingFolder : public testing::Test {
protected:
    static constexpr int MASK_COUNT = 3;

    PlacingFolder()
    {
        SMaskParam param = {};
        param.nozzleCount = 136;
        param.basePass = 1;
        param.xResPass = 1;
        param.yResPass = 1;
        param.bitsPerPixel = 1;
        param.colorTimes = 1;
        for (int i = 0; i < MASK_COUNT; ++i) {
            param.colorCount = i + 1;
            Mask(i) = std::make_unique<CMaskData_Base>();
            EXPECT_TRUE(Mask(i)->Create(param));
            const std::filesystem::path example = directory.Sub("example" + std::to_string(i));
            EXPECT_TRUE(CPlacingRun(*Mask(i), example, {}).Wait().isGood);
            Result(i) = SFolder::Read(example).files;
            EXPECT_EQ(Result(i).size(), 3U + static_cast<std::size_t>(i)); // bytes, description, pictures
            Result(i)["note.txt"] = "somebody else's";
        }
    }

    std::unique_ptr<CMaskData_Base>& Mask(int i) { return m_masks.at(static_cast<std::size_t>(i)); }
    /// The folder's files when that mask's result is in place.
    CFiles& Result(int i) { return m_results.at(static_cast<std::size_t>(i)); }

    /// Puts a result in place by hand.
    void Older_Put(int i) const
    {
        std::filesystem::remove_all(folder);
        std::filesystem::create_directory(folder);
        for (const auto& [name, content] : m_results.at(static_cast<std::size_t>(i)))
            File_Write(folder / name, content);
        std::filesystem::permissions(folder / "mask.bin", std::filesystem::perms{0600}); // is kept
    }

    SRunEnd Run(int i, const SDiskPlan& plan) { return CPlacingRun(*Mask(i), folder, plan).Wait(); }

    CTemporaryDirectory directory;
    const std::filesystem::path folder = directory.Sub("out");

private:
    std::array<std::unique_ptr<CMaskData_Base>, MASK_COUNT> m_masks;
    std::array<CFiles, MASK_COUNT> m_results;
};
