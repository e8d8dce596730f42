#include "geometry/res_desc.h"

#include <gtest/gtest.h>

#include "tests/geometry/aml_bytes.h"
#include "tests/memory_file.h"

namespace {

TEST(ResDescFile, ReadsLittleEndianValuesInOrder) {
    std::string bytes("\xff\x34\x12\xfe\xff\xff\xff", 7);
    put(bytes, 1.5f);
    put(bytes, -2.25);
    const MemoryFile content(bytes);
    ResDescFile file(content.path());
    EXPECT_EQ(file.readByte(), 255);
    EXPECT_EQ(file.readShort(), 0x1234);
    EXPECT_EQ(file.readInt(), -2);
    EXPECT_EQ(file.readFloat(), 1.5f);
    EXPECT_EQ(file.readDouble(), -2.25);
    EXPECT_EQ(file.readInt(), 0);
}

void seekAndReadShort(ResDesc& file) {
    char buffer[7] = {};
    file.seek(-2, SEEK_END);
    EXPECT_EQ(file.read(buffer, 2), 1);
    EXPECT_STREQ(buffer, "ef");
    file.seek(1, SEEK_SET);
    file.seek(1, SEEK_CUR);
    EXPECT_EQ(file.readByte(), 'c');
    EXPECT_EQ(file.read(buffer, 4), 0);
    file.seek(-9, SEEK_SET);
    file.seek(9, SEEK_SET);
    EXPECT_EQ(file.readByte(), 0);
}

TEST(ResDesc, SeeksAndTellsShortReads) {
    const MemoryFile content("abcdef");
    ResDescFile file(content.path());
    seekAndReadShort(file);
    ResDescBytes bytes("abcdef");
    seekAndReadShort(bytes);
}

}  // namespace
