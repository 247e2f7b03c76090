#include "CodeTrans/Normalisation/FileNames.h"

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
    EXPECT_EQ(find(false) + find(true), utf8 + gbk);  // neither exists
    test_support::WriteFileBytes(gbk, "");
    EXPECT_EQ(find(false), gbk);
    test_support::WriteFileBytes(utf8, "");
    EXPECT_EQ(find(false) + find(true), utf8 + utf8);  // both exist
}

TEST(FileNamesTest, FixesTheDefaultDirectory) {
    const test_support::Restore restore(g_sDefaultDir);
    const test_support::TempFolder folder;
    const std::string before = std::filesystem::current_path(), gbk = folder / kGbkName;
    std::filesystem::create_directory(gbk);
    for (const char* none : {static_cast<const char*>(nullptr), ""}) {
        g_sDefaultDir = "stale";
        EXPECT_EQ(GetDefaultPath(none), before);
    }
    EXPECT_EQ(GetDefaultPath((folder / kUtf8Name).c_str()), gbk);
    EXPECT_EQ(GetDefaultPath(g_sDefaultDir.c_str()), gbk);
    EXPECT_STREQ(GetDefaultPath("no such \xE4\xB8\xAD"), "no such \xE4\xB8\xAD");
    EXPECT_EQ(g_sDefaultDir, "no such \xE4\xB8\xAD");
    std::filesystem::current_path(gbk);  // and away with it
    std::filesystem::remove(gbk);
    EXPECT_STREQ(GetDefaultPath(""), "");
    EXPECT_EQ(g_sDefaultDir, "");
    std::filesystem::current_path(before);
}

}  // namespace
