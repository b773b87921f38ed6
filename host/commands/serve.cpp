#include <fmt/core.h>

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iterator>
#include <thread>

#include "commands/commands.h"
#include "commands/value_kinds.h"
#include "platform/system.h"
#include "server/supervisor.h"
#include "session/messages.h"
#include "text/path_text.h"

namespace cwt {
namespace {

struct ServeOptions : Options {
    ServiceTerms service;
    std::string listen = "127.0.0.1:8080", token_file;
    int timeout = 30;
    std::size_t queue = 0, longest_batch = 256;
};

Address ParseAddress(const std::string& text) {
    constexpr int kHighestPort = 65535;
    const std::size_t colon = text.rfind(':');
    const std::string host = text.substr(0, colon);
    Address address;
    const bool is_bracketed = host.starts_with('[') && host.ends_with(']');
    address.host = is_bracketed ? host.substr(1, host.size() - 2) : host;
    const bool is_told = colon != text.npos && !address.host.empty() &&
                         (is_bracketed || host.find(':') == host.npos);
    const char* const end = text.data() + text.size();
    const auto port = std::from_chars(is_told ? text.data() + colon + 1 : end, end, address.port);
    if (port.ec == std::errc() && port.ptr == end && address.port >= 0 &&
        address.port <= kHighestPort) {
        return address;
    }
    throw Broken("--listen: an address and a port are wanted, 127.0.0.1:8080 or [::1]:8080; not " +
                 text);
}

std::string ReadToken(const std::string& name) {
    constexpr std::size_t kShortest = 16, kLongest = 4096;
    const std::filesystem::path file = PathOf(name);
    RequireReadable(file);
    if (IsOpenToOthers(file))
        throw Broken(name + ": everybody may read it, or others than its owner write it");
    std::ifstream stream(file, std::ios::binary);
    std::string token{std::istreambuf_iterator<char>(stream), {}};
    while (token.ends_with('\n') || token.ends_with('\r')) token.pop_back();
    const auto is_visible = [](char c) { return c > ' ' && c < '\x7f'; };
    if (token.size() < kShortest || token.size() > kLongest ||
        !std::ranges::all_of(token, is_visible)) {
        throw Broken(fmt::format("{}: a token of {} characters or more, without blanks, is wanted",
                                 name, kShortest));
    }
    return token;
}

int ServeCommand(const ServeOptions& options) {
    constexpr std::size_t kQueueOfOne = 16;
    ServiceTerms terms = options.service;
    FrontTerms& front = terms.front;
    front.address = ParseAddress(options.listen);
    if (!options.token_file.empty()) {
        front.token = ReadToken(options.token_file);
    } else if (!front.address.is_loopback()) {
        throw Broken("--listen: " + options.listen +
                     " is reached by others than this machine, for which --token-file is wanted");
    }
    front.longest_batch = options.longest_batch << 20;
    terms.queue = options.queue > 0 ? options.queue : kQueueOfOne * front.jobs;
    terms.timeout = std::chrono::seconds(options.timeout);
    terms.sources = FindSources(options, ".");
    return Serve(terms) ? kDone : kBroken;
}

}  // namespace

void AddServe(CLI::App& app, int& exit_code) {
    constexpr unsigned kMostJobs = 256;
    constexpr int kMostConnections = 4096, kMostQueued = 100000, kLongestTimeout = 3600;
    constexpr int kLargestBatch = 4096;
    const auto options = std::make_shared<ServeOptions>();
    CLI::App* command =
        AddCommand(app, "serve", "Rate over HTTP, for programs and on a screen in the browser.",
                   ServeCommand, options, exit_code);
    FrontTerms& front = options->service.front;
    AddData(command, *options);
    AddEngine(command, *options);
    AddServiceGuide(command, *options);
    command
        ->add_option("--listen", options->listen,
                     "Address and port. One that others than this machine reach needs "
                     "--token-file; port 0 is any that is free.")
        ->type_name("ADDRESS")
        ->capture_default_str();
    command
        ->add_option("--token-file", options->token_file,
                     "A file that not everybody may read, with the token that requests must "
                     "carry: Authorization: Bearer TOKEN.")
        ->type_name(kFileValue);
    front.jobs = std::clamp(std::thread::hardware_concurrency(), 1U, kMostJobs);
    command->add_option("--jobs", front.jobs, "Rating processes. Default: the processors.")
        ->check(CLI::Range(1U, kMostJobs));
    command
        ->add_option("--timeout", options->timeout,
                     "Seconds after which a request that has no answer is given up, and its "
                     "process ended.")
        ->check(CLI::Range(1, kLongestTimeout))
        ->capture_default_str();
    command
        ->add_option("--queue", options->queue,
                     "Requests that may wait for a process. Default: 16 for each process.")
        ->check(CLI::Range(1, kMostQueued));
    command->add_option("--connections", front.connections, "Connections at a time.")
        ->check(CLI::Range(1, kMostConnections))
        ->capture_default_str();
    command->add_option("--max-body", options->longest_batch, "MiB of a batch's rows, at most.")
        ->check(CLI::Range(1, kLargestBatch))
        ->capture_default_str();
    command->add_flag("--watch", options->service.watch,
                      "Load the data anew when they change. Without it, on SIGHUP.");
}

}  // namespace cwt
