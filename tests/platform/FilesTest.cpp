#include "src/platform/Adapters.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <cstdlib>

namespace norvane {
namespace {

namespace fs = std::filesystem;

mode_t modeOf(const fs::path& path) {
    struct stat status {};
    EXPECT_EQ(lstat(path.c_str(), &status), 0) << path;
    return status.st_mode & 07777;
}

std::vector<std::string> namesIn(const fs::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder))
        names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
}

class FilesTest : public ::testing::Test {
  protected:
    void SetUp() override {
        PlatformOptions options;
        options.home = home_.path() / "new" / "home";
        ApplicationFolders folders = applicationFolders(options);
        ASSERT_FALSE(makeFolders(folders));
        files_ = makeLinuxFiles(folders);
        documents_ = files_->documentsFolder();
    }
    std::string textOf(const fs::path& file) { return std::string(files_->read(file)->view()); }

    TemporaryFolder home_;
    std::shared_ptr<Files> files_;
    fs::path documents_;
};

TEST_F(FilesTest, KeepsFoldersAndFilesForTheUserAlone) {
    for (const auto& folder :
         {documents_, files_->supportFolder(), files_->cachesFolder(), files_->temporaryFolder()}) {
        EXPECT_EQ(modeOf(folder), 0700u) << folder;
    }
    const fs::path folder = documents_ / "user";
    EXPECT_FALSE(files_->createFolder(folder));
    EXPECT_FALSE(files_->createFolder(folder));
    EXPECT_EQ(files_->createFolder(documents_ / "none" / "user")->code, ENOENT);
    EXPECT_EQ(modeOf(folder), 0700u);
    EXPECT_FALSE(files_->write(folder / "a.pdf", Data("abc")));
    EXPECT_EQ(modeOf(folder / "a.pdf"), 0600u);
    EXPECT_EQ(*files_->sha256(folder / "a.pdf"), sha256Hex("abc"));
    EXPECT_EQ(sha256Hex("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(files_->createFolder(folder / "a.pdf")->code, ENOTDIR);
}

TEST_F(FilesTest, PutsTheXdgFoldersOfTheApplicationBelowTheirBases) {
    for (const auto* variable : {"XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_CONFIG_HOME"}) {
        setenv(variable, (home_.path() / variable).c_str(), 1);
    }
    PlatformOptions options;
    options.applicationName = "tester";
    const ApplicationFolders folders = applicationFolders(options);
    setenv("XDG_CACHE_HOME", "relative", 1);
    EXPECT_EQ(applicationFolders(options).caches, fs::path(getenv("HOME")) / ".cache/tester");
    for (const auto* variable : {"XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_CONFIG_HOME"})
        unsetenv(variable);
    EXPECT_EQ(folders.documents, home_.path() / "XDG_DATA_HOME/tester/Documents");
    EXPECT_EQ(folders.caches, home_.path() / "XDG_CACHE_HOME/tester");
    EXPECT_EQ(folders.defaults, home_.path() / "XDG_CONFIG_HOME/tester/defaults");
}

TEST_F(FilesTest, PutsARelativeHomeBelowTheWorkingDirectoryOfNow) {
    PlatformOptions options;
    options.home = "somewhere";
    EXPECT_EQ(applicationFolders(options).documents, fs::current_path() / "somewhere/Documents");
}

TEST_F(FilesTest, LeavesTheOldFileAndNothingElseWhenTheDiskIsFull) {
    const fs::path file = documents_ / "a.pdf";
    const Data large(std::string(100'000, 'x'));
    ASSERT_FALSE(files_->write(file, Data("old")));
    struct rlimit before {};
    getrlimit(RLIMIT_FSIZE, &before);
    const auto signalBefore = std::signal(SIGXFSZ, SIG_IGN);
    const struct rlimit small { 50'000, before.rlim_max };
    setrlimit(RLIMIT_FSIZE, &small);
    const auto written = files_->write(file, large);
    const auto fresh = files_->write(documents_ / "b.pdf", large);
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, signalBefore);
    ASSERT_TRUE(written);
    EXPECT_EQ(written->code, EFBIG);
    EXPECT_EQ(written->userInfo.at(std::string(kFilePathKey)), Value(file.string()));
    EXPECT_TRUE(fresh);
    EXPECT_EQ(textOf(file), "old");
    EXPECT_EQ(namesIn(documents_), std::vector<std::string>{"a.pdf"});
}

TEST_F(FilesTest, NeverFollowsALinkWhenItWritesOrRemoves) {
    const fs::path outside = home_.file("outside", "precious");
    fs::create_symlink(outside, documents_ / "link");
    EXPECT_FALSE(files_->write(documents_ / "link", Data("new")));
    EXPECT_EQ(textOf(outside), "precious");
    EXPECT_EQ(textOf(documents_ / "link"), "new");

    fs::create_symlink(outside, documents_ / "second");
    EXPECT_EQ(files_->move(documents_ / "second", documents_ / "moved")->code, ELOOP);
    EXPECT_EQ(files_->linkOrCopy(documents_ / "second", documents_ / "linked")->code, ELOOP);
    fs::create_directory_symlink(home_.path(), documents_ / "folder");
    EXPECT_EQ(files_->createFolder(documents_ / "folder")->code, ENOTDIR);
    EXPECT_TRUE(files_->remove(documents_));
    EXPECT_TRUE(fs::exists(outside));
    EXPECT_FALSE(files_->remove(documents_));
}

TEST_F(FilesTest, LinksAndMovesOverWhatIsThere) {
    const fs::path source = home_.file("source", "content");
    fs::permissions(source, fs::perms::all);
    ASSERT_FALSE(files_->write(documents_ / "a", Data("old")));
    EXPECT_FALSE(files_->linkOrCopy(source, documents_ / "a"));
    EXPECT_FALSE(files_->linkOrCopy(source, documents_ / "a"));
    EXPECT_EQ(textOf(documents_ / "a"), "content");
    EXPECT_EQ(fs::hard_link_count(source), 2u);
    EXPECT_FALSE(files_->move(source, documents_ / "b"));
    EXPECT_EQ(modeOf(documents_ / "b"), 0600u);
    EXPECT_FALSE(fs::exists(source));
    EXPECT_EQ(namesIn(documents_), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(files_->move(source, documents_ / "b")->code, ENOENT);
    EXPECT_EQ(textOf(documents_ / "b"), "content");
}

TEST_F(FilesTest, CopiesAcrossFileSystems) {
    const fs::path elsewhere = "/dev/shm/norvane-files-test-" + std::to_string(getpid());
    ASSERT_FALSE(files_->write(elsewhere, Data("content")));
    EXPECT_FALSE(files_->linkOrCopy(elsewhere, documents_ / "copied"));
    EXPECT_TRUE(fs::exists(elsewhere));
    EXPECT_FALSE(files_->move(elsewhere, documents_ / "moved"));
    EXPECT_FALSE(fs::exists(elsewhere));
    EXPECT_EQ(textOf(documents_ / "copied") + textOf(documents_ / "moved"), "contentcontent");
    EXPECT_EQ(modeOf(documents_ / "copied"), 0600u);
}

TEST_F(FilesTest, RefusesToReadWhatIsNoFile) {
    ASSERT_EQ(mkfifo((documents_ / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(files_->read(documents_ / "pipe").error().code, EINVAL);
    EXPECT_EQ(files_->read(documents_).error().code, EISDIR);
    EXPECT_EQ(files_->sha256(documents_ / "none").error().code, ENOENT);
    const fs::path huge = home_.file("huge", "");
    fs::resize_file(huge, (std::uintmax_t{1} << 30) + 1);
    EXPECT_EQ(files_->read(huge).error().code, EFBIG);
}

} // namespace
} // namespace norvane
