#include "batch/crew_messages.h"

#include <cstring>
#include <nlohmann/json.hpp>
#include <utility>

namespace cwt {
namespace {

using Json = nlohmann::ordered_json;

/// Bytes whose meaning a line of JSON before them tells.
std::string WithHead(const Json& head, std::string_view bytes) {
    std::string text = head.dump();
    text.reserve(text.size() + 1 + bytes.size());
    text += '\n';
    return text += bytes;
}

Json TakeHead(std::string_view& bytes) {
    const std::size_t end = bytes.find('\n');
    Json head = Json::parse(bytes.substr(0, end));
    bytes.remove_prefix(end + 1);
    return head;
}

std::string_view TakeBytes(std::string_view& bytes, std::size_t count) {
    const std::string_view taken = bytes.substr(0, count);
    bytes.remove_prefix(count);
    return taken;
}

}  // namespace

std::string WriteJob(const Job& job) {
    Json known = Json::array();
    std::string answers;
    for (const auto& [place, answer] : job.known) {
        const std::string written = WriteAnswer(answer);
        known.push_back({place, written.size()});
        answers += written;
    }
    return WithHead({{"first_row", job.block.first_row},
                     {"lengths", job.block.lengths},
                     {"known", known},
                     {"packed", job.packed}},
                    answers + job.block.text);
}

Job ReadJob(std::string_view bytes) {
    const Json head = TakeHead(bytes);
    Job job;
    head.at("first_row").get_to(job.block.first_row);
    head.at("lengths").get_to(job.block.lengths);
    head.at("packed").get_to(job.packed);
    for (const Json& entry : head.at("known")) {
        const auto size = entry.at(1).get<std::size_t>();
        job.known[entry.at(0).get<std::uint32_t>()] = ReadAnswer(TakeBytes(bytes, size));
    }
    job.block.text = bytes;
    return job;
}

std::string WriteAnswer(const Answer& answer) {
    return WithHead({{"first_row", answer.first_row}, {"tally", answer.tally.Json()}},
                    answer.bytes);
}

Answer ReadAnswer(std::string_view bytes) {
    const Json head = TakeHead(bytes);
    return {head.at("first_row").get<std::uint64_t>(), Tally::FromJson(head.at("tally")),
            std::string(bytes)};
}

}  // namespace cwt
