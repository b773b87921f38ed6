#include "servguide/service_guide.h"

#include <functional>

#include "support/table.h"

namespace hundredweight {
/// A service guide that answers as a test says and keeps the requests.
struct ServiceGuideTest : TariffTest {
    ServiceGuideTest() {
        current = this;
        service_guide.entry_points = {
            [](char* block, char* data) HWT_CALL { return current->Take(block, data, 12); },
            [](char* block, char* data) HWT_CALL { return current->Take(block, data, 570); },
            [](char* block, char* data) HWT_CALL { return current->Take(block, data, 1467); },
            nullptr, []() HWT_CALL { return current->end_result; }};
        context_.UseServiceGuide = 256;
        CopyText(context_.SetByte255, "S255");
        context_.SetByte260 = '1';
        CopyText(context_.OrigZip, "12345");
    }
    ~ServiceGuideTest() override { service_guide = ServiceGuide{}; }

    int32_t Take(char* block, char* data, std::ptrdiff_t offset) {
        EXPECT_EQ(block, reinterpret_cast<char*>(&service_guide.block));
        EXPECT_EQ(data - block, offset);
        requests.emplace_back(block, 1920);
        memcpy(block, Padded(statuses, 100).data() + 4 * requests.size() - 4, 4);
        answer(block);
        return 0;
    }
    /// Prepares for calls that get these statuses, 4 characters each.
    void Expect(const std::string& next) {
        statuses = next;
        requests.clear();
    }
    /// Bytes of all requests, zeros as dots.
    std::string Requested(std::size_t offset, std::size_t size) const {
        std::string slots;
        for (const std::string& request : requests) slots += request.substr(offset, size) + ' ';
        return Dotted(slots);
    }

    /// Result and code; terminals, values A, B and C, service codes, zeros as dots.
    std::string Ask(const std::string& next) {
        const Span answers{offsetof(RateContext, OrigTerminal), 22},
            first = HWT_FIELD(OrigServiceCode), second = HWT_FIELD(DestServiceCode);
        Expect(next);
        for (const Span& each : {answers, first, second}) Fill(context_, each, '#');
        const Untouched rest{context_, {answers, first, second}};
        const std::string told = Told(context_, GetService(&context_)) + ':';
        EXPECT_EQ(requests.size(), next.size() / 4);
        return Dotted(told + BytesOf(context_, answers)) + context_.OrigServiceCode +
               context_.DestServiceCode;
    }

    inline static ServiceGuideTest* current;
    std::vector<std::string> requests;
    std::string statuses;
    std::function<void(char*)> answer = [](char*) {};
    uint8_t end_result = 0;
};

TEST_F(ServiceGuideTest, StartsOnTheDataDirectoryAndEndsWhenUsed) {
    const std::string full(254, 'd');
    for (const auto& [directory, sent] :
         Table<2>(R"(C:\DATA\ C:\DATA  C:\DATA\\ C:\DATA\  DATA DATA  . . )" + full + R"(\eee\ )" +
                  full + ' ' + full + R"(eee\ )" + full + 'e'))
        for (const char* status : {"1001", "1000", "1002", "0"}) {
            PutText(context_.DataDir, directory);
            memset(&service_guide.block, '#', 1920);
            Expect(status);
            EXPECT_EQ(Told(context_, InitializeSGdll(&context_)),
                      status == kGuideSuccess ? "1:0" : "0:0");
            std::string block(1920, '\0');
            Put(block, 29, sent);
            EXPECT_EQ(requests, std::vector{block});
        }
    for (const int result : {0, 1, 0x80}) {
        end_result = static_cast<uint8_t>(result);
        EXPECT_EQ(Told(context_, EndSGdll(&context_)), result != 0 ? "1:0" : "0:0");
    }
    const Span values{offsetof(RateContext, SgValueA), 12};
    context_.UseServiceGuide = 0;
    requests.clear();
    Fill(context_, values, '#');
    const Untouched rest{context_, {values}};
    EXPECT_EQ(GetTerminals(&context_) + InitializeSGdll(&context_) + EndSGdll(&context_), 3);
    EXPECT_EQ(BytesOf(context_, values), std::string(12, '#'));
    EXPECT_EQ(GetService(&context_), 1);
    EXPECT_EQ(BytesOf(context_, values), std::string(12, '\0'));
    EXPECT_TRUE(requests.empty());
}

TEST_F(ServiceGuideTest, StatusesTellWhatWasAnswered) {
    answer = [](char* block) { memcpy(block + 632, "TERM1TERM2DI-CcAaBb", 19); };
    for (const auto& [list, answers] : Table<2>(R"(
        1001,0000,1000,____,1099,1100,10a0,-999,~~~~ 1:0:TERM1TERM2Aa..Bb..Cc..DI
        1002,1050,1098,105_ 0:533:......................__
        110110011001 1:0:TERM1TERM2............DI  999910011050 1:0:TERM1.................D_
        110110501001 1:0:.....TERM2............_I  110111010000 1:0:......................__)")) {
        std::istringstream next(list);
        for (std::string status; std::getline(next, status, ',');) {
            memset(&service_guide.block, '#', 12);
            EXPECT_EQ(Ask(status), answers) << status;
            for (const std::string& request : requests)
                EXPECT_EQ(Dotted(request.substr(0, 12)), "....UNQS255A");
        }
    }
    answer = [](char* block) { memcpy(block + 632, "XXX01XX001DI-\0cAaBb", 19); };
    context_.SetByte260 = '0';
    for (const auto& [blank, first] : Table<2>("Y ..... N XXX01")) {
        context_.BlankUnknownTerminals = blank[0];
        EXPECT_EQ(Ask("1001"), "1:0:" + first + "XX001Aa..Bb..00..DI");
        EXPECT_EQ(Requested(11, 1), "B ");
        EXPECT_EQ(Ask("110110011001"), "1:0:" + first + "XX001............DI");
    }
    answer = [](char* block) { memset(block + 4, '\xFF', 1916); };
    EXPECT_EQ(Ask("1001").substr(4, 14), std::string(12, '\xFF') + "..");
}

TEST_F(ServiceGuideTest, PostalCodesGoIntoTwoSlots) {
    // The first call's slots; those of the calls for one point, and what stays in the block.
    for (const auto& [origin, destination, both, alone, left] : Table<5>(R"(
        12345 K1A0B1 12345.K1A0B0 12345.12345._K1A0B1K1A0B1_ 12345.K1A0B1
        K1A0B1 12345M K1A0B012345M K1A0B1K1A0B1_12345M12345M_ K1A0B112345M
        K1A . K1A..0.....0 K1A...K1A..._............_ K1A.........
        1234567 k1a0b1x 123456k1a0b0 123456123456_k1a0b1k1a0b1_ 123456k1a0b1)")) {
        CopyText(context_.OrigZip, Padded(origin, 7));
        CopyText(context_.DestZip, Padded(destination, 7));
        Ask("1001");
        EXPECT_EQ(Requested(570, 12), both + ' ');
        Ask("110110011001");
        EXPECT_EQ(Requested(570, 12), both + ' ' + alone);
        EXPECT_EQ(Dotted({service_guide.block.FirstZip, 12}), left);
    }
}

TEST_F(ServiceGuideTest, EveryFieldOfATerminalIsTerminated) {
    const Span records{offsetof(RateContext, OrigTerminalRecord), 892};
    const auto record = [](const std::string& terminal, char filler) {
        std::string fields;
        for (const std::size_t width :
             {50U, 0U, 50U, 50U, 30U, 2U, 10U, 12U, 12U, 12U, 100U, 50U, 50U})
            fields += width == 0 ? Padded(terminal, 6) : std::string(width, filler) + '\0';
        return terminal == "-" ? std::string(446, '\0') : fields;
    };
    // Statuses, terminals answered, BlankUnknownTerminals; what is told, the records (- is
    // none).
    for (const auto& [next, answered, blank, told, first, second] : Table<6>(R"(
        10011001 TERM1TERM2 N 1:-1 TERM1 TERM2   10011001 XXX01XX001 Y 1:-1 . XX001
        10011001 XX001XXX__ Y 1:-1 XX001 .       10011001 XXX01XXX02 N 1:-1 XXX01 XXX02
        1050 TERM1TERM2 Y 0:533 - -              10011098 XXX01TERM2 N 0:533 XXX01 -
        00001001 TERM1TERM2 Y 1:-1 - TERM2       10991101 TERM1TERM2 Y 1:-1 - -)")) {
        answer = [&](char* block) {
            memset(block + 1473, requests.size() == 1 ? '\xFF' : 'd', 433);
            memcpy(block + 1523, answered.data() + 5 * (requests.size() - 1), 5);
        };
        memset(&service_guide.block, '#', 1920);
        memcpy(service_guide.block.FirstZip, "12345MK1A0B0", 12);
        context_.BlankUnknownTerminals = blank[0];
        Fill(context_, records, '#');
        Expect(next);
        const Untouched rest{context_, {records}};
        EXPECT_EQ(Told(context_, GetTerminals(&context_)), told) << next;
        EXPECT_EQ(BytesOf(context_, records), record(first, '\xFF') + record(second, 'd'))
            << next << answered;
        const std::size_t calls = next.size() / 4;
        EXPECT_EQ(Requested(1467, 6), std::string("12345M K1A0B0 ", 7 * calls));
        EXPECT_EQ(Requested(0, 12), std::string("....UNQS255A ....UNQS255A ", 13 * calls));
        EXPECT_EQ(Requested(1523, 5), std::string("..... ..... ", 6 * calls));
    }
}

}  // namespace hundredweight
