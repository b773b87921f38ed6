#include <deque>
#include <utility>

#include "batch/crew.h"

namespace cwt {
namespace {

class CrewInProcess : public Crew {
 public:
    explicit CrewInProcess(const CrewTerms& terms) : terms_(terms), session_(terms.sources) {
        terms_.when_loaded();
    }

    bool HasRoom() const override { return blocks_.empty(); }
    void Give(Block block) override { blocks_.push_back(std::move(block)); }

    std::optional<Answer> Take() override {
        if (blocks_.empty()) return std::nullopt;
        const auto tell = [](std::uint32_t /*row*/) {};
        Answer answer = RateBlock(session_, terms_.forms, blocks_.front(), {}, tell);
        answer.bytes = Pack(terms_.packing, answer.bytes);
        blocks_.pop_front();
        return answer;
    }

    std::string said() const override { return session_.said(); }

 private:
    CrewTerms terms_;
    Session session_;
    std::deque<Block> blocks_;
};

}  // namespace

std::unique_ptr<Crew> MakeCrew(const CrewTerms& terms) {
    return std::make_unique<CrewInProcess>(terms);
}

}  // namespace cwt
