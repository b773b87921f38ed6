#include "comparison/comparison_run.h"

#include <filesystem>
#include <optional>
#include <system_error>

#include "comparison/comparison_csv.h"
#include "comparison/comparison_forms.h"
#include "files/output_file.h"
#include "session/messages.h"
#include "text/path_text.h"

namespace cwt {
namespace {

namespace fs = std::filesystem;

bool IsSameFile(const std::string& a, const std::string& b) {
    std::error_code ignored;
    return fs::equivalent(PathOf(a), PathOf(b), ignored) ||
           fs::weakly_canonical(PathOf(a), ignored) == fs::weakly_canonical(PathOf(b), ignored);
}

/// No file that is written may be one that is read, or the other one.
void RequireOtherFiles(const ComparisonRequest& request) {
    for (const std::string& output : {request.csv, request.page}) {
        for (const std::string& input : {request.files.old_path, request.files.new_path}) {
            if (!output.empty() && IsSameFile(output, input)) {
                throw Broken(output + ": is compared and cannot be written");
            }
        }
    }
    if (!request.csv.empty() && !request.page.empty() && IsSameFile(request.csv, request.page)) {
        throw Broken(request.page + ": is written as CSV and cannot be the page too");
    }
}

}  // namespace

Comparison RunComparison(const ComparisonRequest& request) {
    RequireOtherFiles(request);
    std::optional<OutputFile> csv, page;
    if (!request.page.empty()) page.emplace(request.page, request.replace);
    if (!request.csv.empty()) {
        csv.emplace(request.csv, request.replace);
        csv->Write(PairHeader());
    }
    Comparison comparison =
        CompareRows(request.files, [&](const BatchRow& old_row, const BatchRow& new_row) {
            if (csv && (request.all || Changed(old_row, new_row))) {
                csv->Write(PairRow(old_row, new_row));
            }
        });
    if (page) page->Write(ComparisonPage(comparison));
    if (csv) csv->Finish();
    if (page) page->Finish();
    return comparison;
}

}  // namespace cwt
