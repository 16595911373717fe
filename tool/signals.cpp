// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "signals.hpp"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <utility>

namespace bgpdt::tool {
namespace {

constexpr std::array ending = {SIGHUP, SIGINT, SIGQUIT, SIGTERM};

/// The names that there are, for the handler; more than outputs there can be.
constinit std::array<std::atomic<const char *>, 4> removed_by_signals{};

extern "C" void remove_names(int signal)
{
    for (const std::atomic<const char *> &name : removed_by_signals)
        if (name != nullptr)
            static_cast<void>(unlink(name));
    static_cast<void>(std::signal(signal, SIG_DFL)); // NOLINT(bugprone-signal-handler,cert-sig30-c)
    static_cast<void>(std::raise(signal));           // NOLINT(bugprone-signal-handler,cert-sig30-c)
}

/// What the program was started to ignore stays ignored.
void handle_signals()
{
    for (const int signal : ending)
        if (std::signal(signal, remove_names) == SIG_IGN)
            static_cast<void>(std::signal(signal, SIG_IGN));
}

} // namespace

SignalsHeld::SignalsHeld()
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : ending)
        sigaddset(&signals, signal);
    pthread_sigmask(SIG_BLOCK, &signals, &before_);
}

SignalsHeld::~SignalsHeld() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

TemporaryName::TemporaryName(std::filesystem::path path) : path_(std::move(path))
{
    static_cast<void>(std::ranges::any_of(removed_by_signals, [this](std::atomic<const char *> &name) {
        const char *none = nullptr;
        return name.compare_exchange_strong(none, path_.c_str());
    }));
    handle_signals();
}

TemporaryName::~TemporaryName()
{
    if (path_.empty())
        return;
    static_cast<void>(unlink(path_.c_str()));
    release();
}

void TemporaryName::release()
{
    for (std::atomic<const char *> &name : removed_by_signals)
        if (name == path_.c_str())
            name = nullptr;
    path_.clear();
}

} // namespace bgpdt::tool
