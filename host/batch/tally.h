// What came of the rows of a batch, counted.
#pragma once

#include <cstdint>
#include <map>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <utility>

#include "batch/row.h"

namespace cwt {

class Tally {
 public:
    void Count(const Row& row);
    void Add(const Tally& other);

    std::uint64_t rated() const { return rated_; }
    std::uint64_t refused() const { return refused_; }
    std::uint64_t failed() const { return failed_; }
    std::uint64_t rows() const { return rated_ + refused_ + failed_; }

    /// The numbers of rows "rated", "refused", "failed" and "noted" (rated with notes), and
    /// "refused_by": a list of code, text, rows and the first of them, by the first refusal of each
    /// row.
    nlohmann::ordered_json Json() const;
    static Tally FromJson(const nlohmann::ordered_json& json);

    /// The same as lines of text.
    std::string Text() const;

 private:
    using Reason = std::pair<std::int32_t, std::string>;  ///< Code and text.
    struct Refused {
        std::uint64_t rows, first_row;
    };

    void CountRefusal(const Reason& reason, Refused refused);

    std::uint64_t rated_ = 0, refused_ = 0, failed_ = 0, noted_ = 0;
    std::map<Reason, Refused> refused_by_;
};

}  // namespace cwt
