#include <nlohmann/json.hpp>

#include "commands/commands.h"
#include "commands/value_kinds.h"
#include "comparison/comparison_forms.h"
#include "comparison/comparison_run.h"

namespace cwt {
namespace {

struct CompareOptions {
    ComparisonRequest request;
    bool json = false;
};

int Compare(const CompareOptions& options) {
    const Comparison comparison = RunComparison(options.request);
    if (options.json) {
        PrintJson(ComparisonJson(comparison));
    } else {
        Print(ComparisonText(comparison));
    }
    return kDone;
}

}  // namespace

void AddCompare(CLI::App& app, int& exit_code) {
    const auto options = std::make_shared<CompareOptions>();
    ComparisonRequest& request = options->request;
    CLI::App* command = AddCommand(app, "compare",
                                   "Compare what two batches made of the same shipments, under two "
                                   "tariffs, say.",
                                   Compare, options, exit_code);
    command->add_option("OLD", request.files.old_path, "Rows that cwt batch has written.")
        ->type_name(kRowsValue)
        ->required();
    command->add_option("NEW", request.files.new_path, "Rows of the same shipments, rated anew.")
        ->type_name(kRowsValue)
        ->required();
    command
        ->add_option("--from", request.files.form,
                     "Form of both, ndjson or csv. Default: as their names end.")
        ->check(CLI::IsMember({"ndjson", "csv"}));
    command->add_flag("--json", options->json, "Print JSON; amounts are decimal texts.");
    CLI::Option* const csv =
        command
            ->add_option("--csv", request.csv,
                         "Write the shipments that changed to this file, as CSV.")
            ->type_name(kCsvValue);
    command->add_flag("--all", request.all, "With --csv: every shipment.")->needs(csv);
    command
        ->add_option("--html", request.page,
                     "Write a page with plots to this file, which needs no other.")
        ->type_name(kHtmlValue);
    command->add_flag("--force", request.replace, "Replace files that are there already.");
}

}  // namespace cwt
