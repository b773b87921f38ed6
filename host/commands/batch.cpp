#include "batch/batch.h"

#include <fmt/core.h>
#include <hundredweight/version.h>

#include <charconv>
#include <nlohmann/json.hpp>
#include <thread>

#include "batch/batch_names.h"
#include "batch/batch_summary.h"
#include "commands/commands.h"
#include "commands/value_kinds.h"
#include "comparison/comparison_forms.h"
#include "comparison/comparison_run.h"
#include "platform/system.h"
#include "session/messages.h"
#include "text/code_page.h"
#include "text/path_text.h"

namespace cwt {
namespace {

struct BatchCommand : Options {
    BatchOptions batch;
    std::string from, to, part, summary, against, page;
    int timeout = 60;
    bool progress = false, no_progress = false;
};

Part ParsePart(const std::string& text) {
    Part part;
    const char* const end = text.data() + text.size();
    const auto number = std::from_chars(text.data(), end, part.number);
    const bool parted = number.ec == std::errc() && number.ptr != end && *number.ptr == '/';
    const auto count = parted ? std::from_chars(number.ptr + 1, end, part.count) : number;
    if (parted && count.ec == std::errc() && count.ptr == end && part.number >= 1 &&
        part.number <= part.count) {
        return part;
    }
    throw Broken("--part: 1/16 is the first of 16 parts, 16/16 the last; not " + text);
}

BatchOptions OptionsOf(const BatchCommand& command) {
    BatchOptions options = command.batch;
    const bool standard_input = options.input == "-";
    options.from = InputForm(options.input, command.from);
    options.to = OutputForm(options.output, command.to, options.from);
    if (options.resume && options.output.empty()) {
        throw Broken("--resume: only a run with -o FILE can be gone on with");
    }
    if (!command.part.empty()) options.part = ParsePart(command.part);
    if (options.part && standard_input) {
        throw Broken("--part: the rows of standard input cannot be counted beforehand");
    }
    for (const std::string& file : FilesOfOutput(options.output)) {
        if (file != options.output && IsSameFile(options.input, file)) {
            throw Broken(options.input + ": the run writes this file, and cannot read it too");
        }
    }
    options.sources =
        FindSources(command, standard_input ? "." : absolute(PathOf(options.input)).parent_path());
    options.progress = command.progress || (!command.no_progress && IsTerminal(stderr));
    options.timeout = std::chrono::seconds(command.timeout);
    options.version = HWT_VERSION;
    options.say = Say;
    return options;
}

int ExitCodeOf(const BatchResult& result) {
    if (result.stopped_before || result.tally.failed() > 0) return kBroken;
    return result.tally.refused() > 0 ? kRefused : kDone;
}

/// Nothing to rate may be a day without freight, or a program before this one that failed.
void SayNoRows(const BatchOptions& options) {
    const std::string part =
        options.part ? fmt::format("part {}/{} of ", options.part->number, options.part->count)
                     : "";
    Say(fmt::format("note: {}{} has no rows", part,
                    options.input == "-" ? "standard input" : options.input));
}

void SayResult(const BatchResult& result, const BatchOptions& options) {
    Say(SummaryText(result));
    if (!result.stopped_before) {
        if (result.tally.rows() == 0) SayNoRows(options);
        return;
    }
    Say(options.output.empty()
            ? std::string("stopped")
            : fmt::format("stopped before row {}; the same command with --resume goes on",
                          *result.stopped_before));
}

/// Rates the rows, and says what came of them. Result: the exit code.
int RateRows(const BatchOptions& options, const std::string& summary) {
    const auto write = [&](const nlohmann::ordered_json& json) {
        if (!summary.empty()) WriteSummary(summary, json);
    };
    try {
        const BatchResult result = RunBatch(options);
        SayResult(result, options);
        write(SummaryJson(result));
        return ExitCodeOf(result);
    } catch (const std::exception& error) {
        write(FailureSummaryJson(Printable(error.what())));
        throw;
    }
}

/// Rates the rows under the other data too, and compares what came of them.
int RateAgainst(const BatchCommand& command, const BatchOptions& options) {
    if (options.output.empty() || options.to == Form::kDatabase || options.input == "-") {
        throw Broken("--against: a file of shipments and -o FILE, NDJSON or CSV, are wanted");
    }
    if (!options.resume && !command.page.empty() && exists(PathOf(command.page))) {
        throw Broken(command.page + ": is there already; remove it, or --resume replaces it");
    }
    BatchOptions other = options;
    other.sources.data = PathOf(command.against);
    other.output = AgainstName(options.output);
    for (const BatchOptions& side : {other, options}) {
        Say("rating under " + PathText(side.sources.data));
        const int exit_code = RateRows(side, command.summary);
        if (exit_code == kBroken) return kBroken;
    }
    ComparisonRequest request;
    request.files = {other.output, options.output, options.to == Form::kCsv ? "csv" : "ndjson",
                     PathText(other.sources.data), PathText(options.sources.data)};
    request.page = command.page;
    request.replace = options.resume;
    const Comparison comparison = RunComparison(request);
    Print(ComparisonText(comparison));
    const auto& rated = comparison.statuses[0];
    return rated[0] == comparison.rows ? kDone : kRefused;
}

int RunBatchCommand(const BatchCommand& command) {
    const BatchOptions options = OptionsOf(command);
    if (!command.summary.empty()) {
        RequireSummary(command.summary, options);
        WriteSummary(command.summary, FailureSummaryJson("the run has not ended"));
    }
    CatchInterrupts();
    return command.against.empty() ? RateRows(options, command.summary)
                                   : RateAgainst(command, options);
}

}  // namespace

void AddBatch(CLI::App& app, int& exit_code) {
    const auto options = std::make_shared<BatchCommand>();
    CLI::App* command = AddCommand(app, "batch", "Rate many shipments, rows of NDJSON or CSV.",
                                   RunBatchCommand, options, exit_code);
    BatchOptions& batch = options->batch;
    command
        ->add_option("INPUT", batch.input,
                     "The shipments, a row each: NDJSON or CSV, also packed with gzip or "
                     "Zstandard; - is standard input.")
        ->type_name(kRowsValue)
        ->required();
    command
        ->add_option("-o,--output", batch.output,
                     "Where the rows go, by the name's ending: .ndjson, .csv, either with .gz "
                     "or .zst behind it, or .sqlite. Default: standard output. A file that is "
                     "there is not overwritten.")
        ->type_name(kRowsValue);
    command->add_option("--from", options->from, "Form of the input: ndjson or csv.")
        ->check(CLI::IsMember({"ndjson", "csv"}));
    command
        ->add_option("--to", options->to,
                     "Form of the output: ndjson, csv or sqlite. Default: by the name of the "
                     "output, else that of the input.")
        ->check(CLI::IsMember({"ndjson", "csv", "sqlite"}));
    AddData(command, *options);
    AddEngine(command, *options);
    AddServiceGuide(command, *options);
    constexpr unsigned kMostJobs = 1024;
    batch.jobs = std::max(1U, std::thread::hardware_concurrency());
    command->add_option("--jobs", batch.jobs, "Worker processes. Default: the processors.")
        ->check(CLI::Range(1U, kMostJobs));
    command
        ->add_option("--part", options->part,
                     "Rate a slice of the rows: 3/16 is the third of sixteen, which behind one "
                     "another are the whole.")
        ->type_name("K/N");
    command->add_flag("--resume", batch.resume,
                      "Go on with a run that was stopped or killed; begin when there is none.");
    constexpr int kLongestTimeout = 86400;
    command
        ->add_option("--timeout", options->timeout,
                     "Seconds after which a row that has no answer is given up.")
        ->check(CLI::Range(1, kLongestTimeout))
        ->capture_default_str();
    command
        ->add_option("--pass", batch.allowed,
                     "A column of a CSV input to pass on, though its name is nearly that of "
                     "one that is read.")
        ->type_name("COLUMN");
    CLI::Option* const against =
        command
            ->add_option("--against", options->against,
                         "Rate the rows under this data directory too, to FILE.against before "
                         "its ending, and compare: it is the old tariff, --data the new one.")
            ->type_name(kDirectoryValue);
    command->add_option("--html", options->page, "With --against: write a page with plots.")
        ->type_name(kHtmlValue)
        ->needs(against);
    command->add_option("--summary", options->summary, "Write the summary to this file, as JSON.")
        ->type_name(kJsonValue);
    command->add_flag("--progress", options->progress,
                      "Tell how far it is. Default: when standard error is a terminal.");
    command->add_flag("--no-progress", options->no_progress, "Do not.");
}

}  // namespace cwt
