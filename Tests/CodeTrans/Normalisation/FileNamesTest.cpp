#include "CodeTrans/Normalisation/FileNames.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "Support/TestSupport.h"
#include "Utility/Global.h"

namespace {

constexpr char kUtf8Name[] = "\xE4\xB8\xAD.txt", kGbkName[] = "\xD6\xD0.txt";

TEST(FileNamesTest, FindsTheFormThatExists) {
    const test_support::TempFolder folder;
    const std::string utf8 = folder / kUtf8Name, gbk = folder / kGbkName;
    const auto find = [&](bool skip_check) {
        std::string name = utf8;
        const bool is_gbk = GetAnsiFilename(name.c_str(), name, skip_check);
        EXPECT_EQ(is_gbk, name == gbk);
        return name;
    };
    EXPECT_EQ(find(false), utf8);  // neither exists
    EXPECT_EQ(find(true), gbk);
    test_support::WriteFileBytes(gbk, "");
    EXPECT_EQ(find(false), gbk);
    test_support::WriteFileBytes(utf8, "");
    EXPECT_EQ(find(false), utf8);  // both exist
    EXPECT_EQ(find(true), utf8);
}

TEST(FileNamesTest, FixesTheDefaultDirectory) {
    const test_support::Restore restore(g_sDefaultDir);
    const std::string working_directory = std::filesystem::current_path().string();
    for (const char* none : {static_cast<const char*>(nullptr), ""}) {
        g_sDefaultDir = "stale";
        EXPECT_EQ(GetDefaultPath(none), working_directory);
    }
    const test_support::TempFolder folder;
    std::filesystem::create_directory(folder / kGbkName);
    EXPECT_EQ(GetDefaultPath((folder / kUtf8Name).c_str()), folder / kGbkName);
    EXPECT_EQ(GetDefaultPath(g_sDefaultDir.c_str()), folder / kGbkName);
    EXPECT_EQ(GetDefaultPath("no such \xE4\xB8\xAD"), std::string("no such \xE4\xB8\xAD"));
    EXPECT_EQ(g_sDefaultDir, "no such \xE4\xB8\xAD");

    std::filesystem::current_path(folder / kGbkName);  // and away with it
    std::filesystem::remove(folder / kGbkName);
    EXPECT_STREQ(GetDefaultPath(""), "");
    EXPECT_EQ(g_sDefaultDir, "");
    std::filesystem::current_path(working_directory);
}

}  // namespace
