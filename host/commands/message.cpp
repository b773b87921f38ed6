#include <charconv>
#include <vector>

#include "commands/commands.h"
#include "commands/value_kinds.h"
#include "messages/message_guide.h"
#include "session/messages.h"

namespace cwt {
namespace {

struct MessageOptions {
    std::vector<std::string> codes;
};

/// The statuses of an engine have four digits, the first of which is 0.
int32_t CodeOf(const std::string& written) {
    constexpr std::size_t kStatus = 4;
    int32_t code = 0;
    const char* const end = written.data() + written.size();
    const auto [behind, error] = std::from_chars(written.data(), end, code);
    if (error != std::errc() || behind != end || code <= 0) {
        throw Broken("\"" + written + "\" is no code");
    }
    return written.size() == kStatus && written.front() == '0' ? kEnginesWords : code;
}

int Message(const MessageOptions& options) {
    if (options.codes.empty()) {
        Print(MessageGuide());
        return kDone;
    }
    int exit_code = kDone;
    std::string text;
    for (const std::string& written : options.codes) {
        const std::optional<std::string> explained = ExplainMessage(CodeOf(written));
        if (explained) {
            text += (text.empty() ? "" : "\n") + *explained;
        } else {
            Say("there is no message of the code " + written);
            exit_code = kRefused;
        }
    }
    Print(text);
    return exit_code;
}

}  // namespace

void AddMessage(CLI::App& app, int& exit_code) {
    const auto options = std::make_shared<MessageOptions>();
    CLI::App* command =
        AddCommand(app, "message", "Tell what a message means and what to do about it.", Message,
                   options, exit_code);
    command
        ->add_option("CODE", options->codes,
                     "The number behind a message, \"(code 105)\". Default: every one, as "
                     "Markdown.")
        ->type_name(kCodeValue);
}

}  // namespace cwt
