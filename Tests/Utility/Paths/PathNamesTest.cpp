#include "Utility/Paths/PathNames.h"

#include "Support/TestSupport.h"

namespace {

TEST(PathNames, SplitEveryShortPathLikeRegularExpressions) {
    const std::regex at_dot("^([^]*)\\.([^.]*)$"), at_run("^([^]*?)[/\\\\]+([^/\\\\]*)$"),
        at_last("^(([^]*)[/\\\\])?(([^/\\\\.]*)[^/\\\\]*)$");
    char directory[4096], file_name[4096];
    std::string parts[3];
    const std::string here = std::filesystem::current_path();
    for (const std::string& path : test_support::AllTexts("a./\\", 6)) {
        std::smatch dot, run, last;
        const std::string cut = std::regex_search(path, dot, at_dot) ? dot.str(1) : path;
        const bool has_run = std::regex_search(cut, run, at_run);
        GetPathFile(path.c_str(), parts[0], parts[1], parts[2]);
        ASSERT_EQ(parts[0] + '|' + parts[1] + '|' + parts[2],
                  (has_run ? run.str(1) + '|' + run.str(2) : ".|" + cut) + '|' + dot.str(2));
        std::regex_search(path, last, at_last);
        ASSERT_EQ(getFilePath(path.c_str()), last.str(1));
        ASSERT_EQ(GetRelevatePath(path.c_str(), directory, file_name), last.str(3)) << path;
        ASSERT_EQ(directory, last[1].matched ? last.str(2) : here) << path;
        std::strcpy(file_name, path.c_str());
        ASSERT_EQ(GetFilename(file_name, file_name), last.str(4)) << path;
    }
}

TEST(PathNames, JoinAndCompare) {
    const std::string longest(4093, 'd');
    char buffer[4096];
    const auto full = [&buffer](const char* directory, const char* name) {
        GetFullFileName(buffer, directory, name);
        return std::string(buffer);
    };
    EXPECT_EQ(full(nullptr, "f") + full("", "f") + full("d/", "f"), "ffd//f");
    EXPECT_STREQ(GetAbsolutePath("", "f", buffer), "/f");
    EXPECT_EQ(full(longest.c_str(), "f"), longest + "/f");
    EXPECT_EQ(full(longest.c_str(), "ff"), "");
    EXPECT_TRUE(IsExtIncluded("HTML", {"txt", "htm"}) && IsExtIncluded("", {"txt", ""}));
    EXPECT_FALSE(IsExtIncluded("ht", {"txt", "htm"}));
}

TEST(PathNames, MakeTheDirectoriesOfAPath) {
    const test_support::TempFolder folder;
    const std::string before = std::filesystem::current_path(), base = folder / "";
    std::string full = base;
    EXPECT_EQ(gfn_GetFilePath(full.c_str(), "\\x//y\\z.txt", full), base + "\\x//y\\z.txt");
    EXPECT_EQ(std::filesystem::current_path(), base + "x/y");
    gfn_GetFilePath(base.c_str(), "x/z.txt", full);
    EXPECT_EQ(std::filesystem::current_path(), base + "x");
    std::filesystem::current_path(before);
}

}  // namespace
