// The front's line to those who rate, by way of the supervisor.
#pragma once

#include <atomic>
#include <cstdint>
#include <future>
#include <map>
#include <mutex>
#include <nlohmann/json.hpp>
#include <string>

#include "platform/worker_process.h"
#include "server/desk.h"

namespace cwt {

/// May be used by many threads.
class DeskLine {
 public:
    DeskLine(Foreman& foreman, std::uint64_t first_id) : foreman_(foreman), last_id_(first_id) {}

    void Say(std::uint32_t kind, const std::string& text);

    /// Asks the current generation, or one that is pinned. What comes is always a reply.
    std::future<DeskReply> Ask(const DeskRequest& request, std::uint64_t generation = 0);

    /// Takes what the supervisor says, until it says no more.
    void Receive();

    /// How the service is, and what its set is.
    nlohmann::json state() const;
    std::string set() const;

    const std::atomic<bool>& is_stopping() const { return is_stopping_; }

 private:
    friend class Pinned;
    std::future<std::string> Send(std::uint32_t kind, std::uint64_t generation,
                                  const std::string& bytes);

    Foreman& foreman_;
    std::mutex sending_;
    mutable std::mutex mutex_;  ///< Of what follows.
    std::uint64_t last_id_;
    std::map<std::uint64_t, std::promise<std::string>> open_;
    nlohmann::json state_ = {{"generation", 0}, {"ready", 0}, {"failure", nullptr}};
    std::string set_;
    std::atomic<bool> is_stopping_ = false;
};

/// Keeps the generation that is the current one now, for as long as this object lives.
class Pinned {
 public:
    explicit Pinned(DeskLine& line);
    ~Pinned();
    Pinned(const Pinned&) = delete;
    Pinned& operator=(const Pinned&) = delete;

    /// 0 when there is none yet.
    std::uint64_t generation() const { return generation_; }

 private:
    DeskLine& line_;
    std::uint64_t generation_;
};

}  // namespace cwt
