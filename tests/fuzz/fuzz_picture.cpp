// Any bytes as a picture: either they are one, with as many levels as its sides say, or the user is told on one
// line what is wrong with them. What was read can be made into ink.

#include "fuzzing.h"
#include "picture/pictureread.h"
#include "sheet/inkplanes.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

using namespace dotweave;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    SPixelPicture picture;
    try {
        picture = Picture_Read({data, size});
    } catch (const std::runtime_error& error) { // anything else ends the process
        const std::string message = error.what();
        EXPECT_EQ(message.rfind("the picture cannot be read: ", 0), 0U) << message;
        EXPECT_EQ(message.find('\n'), std::string::npos) << message;
        return 0;
    }
    EXPECT_GE(picture.width, 1);
    EXPECT_GE(picture.height, 1);
    EXPECT_TRUE(picture.channelCount == 1 || picture.channelCount == 3) << picture.channelCount;
    const std::size_t pixelCount =
        static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height);
    EXPECT_EQ(picture.pixels.size(), pixelCount * static_cast<std::size_t>(picture.channelCount));
    for (const SInkPlane& plane : InkPlanes_Colour(picture)) {
        EXPECT_EQ(plane.amounts.size(), pixelCount);
        EXPECT_EQ(InkPlane_Screen(plane, 0).Width(), picture.width);
    }
    return 0;
}
