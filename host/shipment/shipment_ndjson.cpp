#include "shipment/shipment_json.h"
#include "shipment/shipment_reader.h"

namespace cwt {
namespace {

class NdjsonReader : public ShipmentReader {
 public:
    Refusals Read(std::string_view row, Shipment& shipment,
                  std::vector<std::string>& passed) override {
        shipment = {};
        passed.clear();
        if (row.size() > kLongestRow) return {{"", "a row of more than 1 MiB"}};
        // Its end is no line more.
        if (row.ends_with('\n')) row.remove_suffix(1);
        return ReadShipmentJson(row, shipment);
    }

    const std::vector<std::string>& passed() const override { return no_columns_; }

    std::size_t RowEnd(std::string_view text, bool last) const override {
        const std::size_t end = text.find('\n');
        if (end != text.npos) return end + 1;
        return last && !text.empty() ? text.size() : text.npos;
    }

 private:
    std::vector<std::string> no_columns_;
};

}  // namespace

std::unique_ptr<ShipmentReader> MakeNdjsonReader() {
    return std::make_unique<NdjsonReader>();
}

}  // namespace cwt
