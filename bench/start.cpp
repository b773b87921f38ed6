#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "measures.h"
#include "reference/samples/sample_data.h"

namespace hundredweight::bench {
namespace {

/// Starts a program and waits for its end.
Work Program(const std::vector<std::string>& words) {
    return Repeatedly([words = words]() mutable {
        std::vector<char*> arguments;
        for (std::string& word : words) arguments.push_back(word.data());
        arguments.push_back(nullptr);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        pid_t process = 0;
        const int error =
            posix_spawn(&process, arguments[0], &actions, nullptr, arguments.data(), environ);
        posix_spawn_file_actions_destroy(&actions);
        int status = 0;
        if (error != 0 || waitpid(process, &status, 0) != process || status != 0) {
            throw std::runtime_error(words[0] + ": did not end well");
        }
    });
}

}  // namespace

void MeasureStart(Table& table, const Extent& /*extent*/) {
    samples::WriteSampleData(".");
    table.Measure({.what = "`cwt rate`, one shipment, from its start to its end",
                   .against = "`true`",
                   .goal = 2,
                   .clock = Clock::kWall},
                  Program({HWT_CWT, "rate", "shipments/01-deficit-and-discount.json"}),
                  Program({"/bin/true"}));
}

}  // namespace hundredweight::bench
