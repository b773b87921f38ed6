// The reference engine without the library.
#pragma once

#include <dlfcn.h>
#include <hundredweight/engine_interface.h>

#include <filesystem>
#include <stdexcept>

namespace hundredweight::bench {

template <typename Function>
Function EntryPoint(const char* library, const char* name) {
    void* const module = dlopen(library, RTLD_NOW | RTLD_LOCAL);
    void* const symbol = module ? dlsym(module, name) : nullptr;
    if (!symbol) throw std::runtime_error(dlerror());
    return reinterpret_cast<Function>(symbol);
}

class Engine {
 public:
    explicit Engine(const std::filesystem::path& data) : handle_(start_(data.c_str())) {}
    ~Engine() { end_(handle_); }
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    void Rate(EngineRateRecord& record) {
        block_.Capacity = sizeof block_.Data;
        rate_(handle_, &record, &block_);
    }

 private:
    static inline const auto start_ =
        EntryPoint<Tolvex_InitializeTolvexExFunction>(HWT_TOLVEX, "Tolvex_InitializeTolvexEx");
    static inline const auto end_ =
        EntryPoint<Tolvex_EndTolvexExFunction>(HWT_TOLVEX, "Tolvex_EndTolvexEx");
    static inline const auto rate_ =
        EntryPoint<Tolvex_RateShipment2ExFunction>(HWT_TOLVEX, "Tolvex_RateShipment2Ex");

    void* handle_;
    EngineResultBlock block_{};
};

}  // namespace hundredweight::bench
