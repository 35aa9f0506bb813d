#include <System/Files.h>

#include <gtest/gtest.h>
#include <support/TemporaryDirectory.h>

#include <fstream>

#include <sys/stat.h>

using namespace platform;
namespace fs = std::filesystem;

namespace {

unsigned modeOf(const fs::path& path) {
    return static_cast<unsigned>(fs::status(path).permissions());
}

}  // namespace

TEST(Files, OnlyRegularFilesAreRead) {
    test::TemporaryDirectory folder;
    auto file = folder.write("file", "0123456789");
    auto fifo = folder / "fifo";
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    fs::create_symlink("file", folder / "link");

    std::error_code error;
    EXPECT_EQ(readRegularFile(folder / "link", error), "0123456789");
    EXPECT_EQ(readRegularFile(file, error, 10), "0123456789");
    EXPECT_FALSE(readRegularFile(file, error, 9));
    EXPECT_EQ(error, std::errc::file_too_large);
    EXPECT_FALSE(readRegularFile(fifo, error));
    EXPECT_EQ(error, std::errc::operation_not_supported);
    EXPECT_FALSE(readRegularFile(folder.path(), error));
    EXPECT_EQ(error, std::errc::is_a_directory);
    EXPECT_FALSE(readRegularFile(folder / "absent", error));
    EXPECT_EQ(error, std::errc::no_such_file_or_directory);
    // Ten gigabytes that nobody wrote, between two words.
    std::ofstream sparse(folder / "sparse");
    sparse << "begin";
    sparse.seekp(std::streamoff{10} << 30) << "end";
    sparse.close();
    auto written = readRegularFile(folder / "sparse", error, UINTMAX_MAX, Holes::skipped).value_or("");
    EXPECT_LT(written.size(), 1u << 20) << "this file system keeps no holes";
    std::erase(written, '\0');
    EXPECT_EQ(written, "beginend");
    // A file whose size is reported as 0 though it has content.
    EXPECT_TRUE(readRegularFile("/proc/self/status", error)->starts_with("Name:"));
}

TEST(Files, AWriteReplacesTheFileAndKeepsALinkToIt) {
    test::TemporaryDirectory folder;
    std::error_code error;
    auto file = folder.write("real/file", "old");
    fs::create_symlink("real/file", folder / "link");
    ASSERT_TRUE(writeFileAtomically(folder / "link", "new", 0600, error)) << error.message();
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_EQ(test::readFile(file), "new");
    EXPECT_EQ(modeOf(file), 0600u);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder / "real"), {}), 1);

    EXPECT_FALSE(writeFileAtomically(folder / "absent/file", "new", 0600, error));
    EXPECT_EQ(error, std::errc::no_such_file_or_directory);
}

TEST(Files, FoldersAreMadeWithTheirParents) {
    test::TemporaryDirectory folder;
    std::error_code error;
    ASSERT_TRUE(createDirectories(folder / "a/b/c", 0700, error));
    ASSERT_TRUE(createDirectories(folder / "a/b/c/", 0700, error));
    EXPECT_EQ(modeOf(folder / "a"), 0700u);
    folder.write("file", "");
    EXPECT_FALSE(createDirectories(folder / "file/a", 0700, error));
    EXPECT_TRUE(error);
}

TEST(Files, SettingAsideNeverReplacesAnEarlierOne) {
    test::TemporaryDirectory folder;
    std::error_code error;
    for (const char* content : {"1", "2"}) {
        auto file = folder.write("x.plist", content);
        auto aside = setAside(file, error);
        ASSERT_TRUE(aside) << error.message();
        EXPECT_EQ(aside->filename(), std::string("x.plist.unreadable-") + content);
        EXPECT_EQ(test::readFile(*aside), content);
        EXPECT_FALSE(fs::exists(file));
    }
    EXPECT_FALSE(setAside(folder / "absent", error));
    EXPECT_EQ(error, std::errc::no_such_file_or_directory);
}
