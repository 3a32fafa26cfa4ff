#pragma once

#include <gtest/gtest.h>

#include "shell/OpenDoc.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{

/// Opens files of a folder of its own.
class OpeningTest : public testing::Test
{
protected:
    std::int32_t Open(const String& file) { return OpenDoc(file, errorText_); }

    /// A file that isn't there, in a folder that is.
    void ExpectThatAMissingFileIsTold()
    {
        EXPECT_EQ(Open(folder_.PathOf(u"gone.txt")), 2);
        EXPECT_EQ(errorText_, u"File not found");
    }

    const TemporaryFolder folder_;
    String errorText_ = u"as before";
};

}  // namespace tessarine
