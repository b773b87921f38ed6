// Files between programs, and the names that Windows reads in its own way.
#include <hundredweight/platform.h>
#include <io.h>
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
        auto reader = in_use ? std::make_unique<Held>("ABC.DEF", GENERIC_READ, kShared) : nullptr;
        if (!in_use) SetFileAttributesA("ABC.DEF", FILE_ATTRIBUTE_READONLY);
        EXPECT_EQ(Told(context_, WriteDefFile(&context_)), "0:241") << in_use;
        reader.reset();
        SetFileAttributesA("ABC.DEF", FILE_ATTRIBUTE_NORMAL);
        EXPECT_EQ(FileContent("ABC.DEF"), "old");
        EXPECT_EQ(std::distance(std::filesystem::directory_iterator("."), {}), 2) << "a temporary";
    }
    EXPECT_EQ(Told(context_, WriteDefFile(&context_)), "1:0");
    EXPECT_EQ(FileContent("ABC.DEF"), std::string(sizeof context_.DefRecord, 'N'));
}

TEST_F(FilesTest, OpenFilesAreNotInheritedByOtherPrograms) {
    for (const bool input_is_open : {true, false}) {
        const int input = dup(0);
        if (!input_is_open) close(0);
        {
            const OpenFile file = OpenDataFile(context_, ".COZ");
            DWORD flags = HANDLE_FLAG_INHERIT;
            GetHandleInformation(reinterpret_cast<HANDLE>(_get_osfhandle(file.handle())), &flags);
            EXPECT_EQ(flags & HANDLE_FLAG_INHERIT, 0U) << input_is_open;
        }
        dup2(input, 0);
        close(input);
    }
}

TEST_F(FilesTest, AnOptionFileNamedAsItsBackupOrTemporaryStays) {
    const std::string old = Padded(Padded("FIRST", 1792, 'f'), 2 * 1792);
    OptionRecord record;
    for (const char* name : {"SAVEPRS.FIL ", "saveprs.fil.", "TEMPPRS.FIL. "}) {
        WriteFile(name, old);
        EXPECT_EQ(ReadFendroOpt(name, &record, "FIRST"), 0) << name;
        EXPECT_TRUE(FileContent(name) == old) << name;
        std::filesystem::remove(name);
    }
}

TEST_F(FilesTest, TheCommandTakesNamesInAnyLetters) {
    const std::wstring cwt = (before_.root_name() / HWT_CWT).make_preferred().wstring();
    const auto run = [&](const std::wstring& arguments) {
        return _wsystem((cwt + L' ' + arguments).c_str());
    };
    EXPECT_EQ(run(L"sample Z\u00FCrich"), 0);
    EXPECT_EQ(run(L"rate Z\u00FCrich/shipments/16-whole-road.json >bill"), 0);
    const std::string bill = FileContent("bill");
    EXPECT_TRUE(bill.find("513.50\n") != bill.npos && bill.find('\r') == bill.npos) << bill;
}

TEST(Libraries, LeaveNothingBehindWhenTheyAreUnloaded) {
    for (const char* path : {HWT_LIBRARY, HWT_SERVICE_GUIDE}) {
        const DWORD first = TlsAlloc();
        TlsFree(first);
        for (int time = 0; time < 100; ++time) {
            void* const module = LoadPartnerLibrary(path);
            ASSERT_NE(module, nullptr) << PartnerLibraryError();
            UnloadPartnerLibrary(module);
        }
        const DWORD next = TlsAlloc();
        TlsFree(next);
        EXPECT_EQ(next, first) << path;
    }
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
    EXPECT_TRUE(platform::IsSeparator('\\') && !platform::IsSeparator('/'));
}

}  // namespace
}  // namespace hundredweight
