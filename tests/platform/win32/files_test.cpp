// Files between programs, and the names that Windows reads in its own way.
#include <windows.h>

#include "platform/file.h"
#include "support/table.h"
#include "tariff/data_file.h"

namespace hundredweight {
namespace {

/// A file that another program has open.
class Held {
 public:
    Held(const std::filesystem::path& path, DWORD access, DWORD sharing)
        : handle_(CreateFileA(path.string().c_str(), access, sharing, nullptr, OPEN_EXISTING, 0,
                              nullptr)) {}
    ~Held() { CloseHandle(handle_); }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
    bool opened() const { return handle_ != INVALID_HANDLE_VALUE; }

 private:
    const HANDLE handle_;
};

constexpr DWORD kShared = FILE_SHARE_READ | FILE_SHARE_WRITE;

struct FilesTest : TariffTest {
    FilesTest() {
        std::filesystem::current_path(directory_);
        WriteFile("ABC.COZ", "abcdef");
    }
    ~FilesTest() override { std::filesystem::current_path(before_); }

    const std::filesystem::path before_ = std::filesystem::current_path();
};

TEST_F(FilesTest, DataFilesAreSharedWithProgramsThatWriteThem) {
    {
        const Held writer(directory_ / "ABC.COZ", GENERIC_READ | GENERIC_WRITE, kShared);
        EXPECT_EQ(ReadCOZFile(&context_), 1);
    }
    {
        const OpenFile file = OpenDataFile(context_, ".COZ");
        EXPECT_TRUE(Held(directory_ / "ABC.COZ", GENERIC_WRITE, kShared).opened());
        EXPECT_FALSE(Held(directory_ / "ABC.COZ", GENERIC_READ, 0).opened());
    }
    const Held owner(directory_ / "ABC.COZ", GENERIC_READ, 0);
    EXPECT_EQ(ReadCOZFile(&context_), 0);
    EXPECT_EQ(Told(context_, OpenLevelFile(&context_, "ABC.COZ")), "0:300");
}

TEST_F(FilesTest, AFileInUseOrProtectedIsNotReplaced) {
    FillField(context_.DefRecord, 'N');
    for (const bool in_use : {true, false}) {
        WriteFile("ABC.DEF", "old");
        {
            const Held reader(directory_ / "ABC.DEF", GENERIC_READ, in_use ? kShared : 7);
            if (!in_use) SetFileAttributesA("ABC.DEF", FILE_ATTRIBUTE_READONLY);
            EXPECT_EQ(Told(context_, WriteDefFile(&context_)), "0:241") << in_use;
        }
        EXPECT_EQ(FileContent("ABC.DEF"), "old");
        SetFileAttributesA("ABC.DEF", FILE_ATTRIBUTE_NORMAL);
        EXPECT_EQ(std::distance(std::filesystem::directory_iterator("."), {}), 2) << "a temporary";
    }
    EXPECT_EQ(Told(context_, WriteDefFile(&context_)), "1:0");
    EXPECT_EQ(FileContent("ABC.DEF"), std::string(sizeof context_.DefRecord, 'N'));
}

TEST_F(FilesTest, NamesAreReadAsWindowsReadsThem) {
    const auto opens = [&](const char* base, const char* extension) {
        PutText(context_.FileBase, base);
        return static_cast<bool>(OpenDataFile(context_, extension));
    };
    WriteFile("ABC.LA", "content");
    EXPECT_TRUE(opens("abc", ".LA "));
    EXPECT_TRUE(opens("Abc", ".la"));
    EXPECT_FALSE(opens("NUL", ".LA")) << "a device";
    EXPECT_TRUE(platform::FileExists("ABC.LA "));
    EXPECT_TRUE(platform::IsSeparator('\\'));
    EXPECT_FALSE(platform::IsSeparator('/'));
}

}  // namespace
}  // namespace hundredweight
