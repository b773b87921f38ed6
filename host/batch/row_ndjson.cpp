#include <utility>

#include "batch/row.h"
#include "batch/verdict.h"
#include "text/json_writer.h"

namespace cwt {
namespace {

class NdjsonForm : public RowForm {
 public:
    explicit NdjsonForm(std::vector<std::string> passed) : passed_(std::move(passed)) {}

    void Append(std::string& out, const Row& row) const override {
        JsonWriter json(out, JsonWriter::kCompact);
        json.Object([&] {
            json.Key("schema").Text("hundredweight/row/1");
            json.Key("row").Number(static_cast<std::int64_t>(row.number));
            json.Key("id").TextOrNull(row.id);
            WriteOutcome(json, row);
            if (!passed_.empty()) WriteColumns(json.Key("columns"), row.passed);
        });
        out += '\n';
    }

 private:
    static void WriteOutcome(JsonWriter& json, const Row& row) {
        if (const auto* bill = std::get_if<Bill>(&row.outcome)) {
            json.Key("status").Text("rated");
            WriteJson(json.Key("bill"), *bill);
        } else if (const auto* refusals = std::get_if<Refusals>(&row.outcome)) {
            json.Key("status").Text("refused");
            WriteJson(json.Key("refusals"), *refusals);
        } else {
            json.Key("status").Text("failed");
            json.Key("reason").Text(std::get<Failure>(row.outcome).reason);
        }
    }

    void WriteColumns(JsonWriter& json, const std::vector<std::string>& texts) const {
        json.Object([&] {
            for (std::size_t i = 0; i < passed_.size(); ++i) {
                json.Key(passed_[i]).Text(i < texts.size() ? texts[i] : "");
            }
        });
    }

    std::vector<std::string> passed_;
};

}  // namespace

std::unique_ptr<RowForm> MakeNdjsonForm(std::vector<std::string> passed) {
    return std::make_unique<NdjsonForm>(std::move(passed));
}

}  // namespace cwt
