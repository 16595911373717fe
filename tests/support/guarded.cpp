// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "guarded.hpp"

#include <algorithm>
#include <array>
#include <csetjmp>
#include <csignal>
#include <cstring>
#include <map>
#include <sstream>
#include <stdexcept>
#include <utility>

#include <sys/mman.h>
#include <unistd.h>

namespace bgpdt::test {

namespace {

constexpr std::uint8_t canary = 0xC3;
constexpr std::size_t canary_reach = 32;
constexpr std::array<std::uint8_t, canary_reach> canaries = [] {
    std::array<std::uint8_t, canary_reach> bytes{};
    bytes.fill(canary);
    return bytes;
}();

std::size_t page_size()
{
    static const auto size = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    return size;
}

std::uint8_t *map_between_guards(int file, std::size_t size, int protection)
{
    const std::size_t page = page_size();
    void *reserved = mmap(nullptr, size + 2 * page, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (reserved == MAP_FAILED)
        throw std::runtime_error("no address space for guarded pages");
    auto *inner = static_cast<std::uint8_t *>(reserved) + page;
    if (size > 0 && mmap(inner, size, protection, MAP_SHARED | MAP_FIXED, file, 0) == MAP_FAILED)
        throw std::runtime_error("no memory for guarded pages");
    return inner;
}

Guarded::Pages new_pages(std::size_t size)
{
    const int file = memfd_create("guarded", 0);
    if (file < 0 || ftruncate(file, static_cast<off_t>(size)) != 0)
        throw std::runtime_error("no memory file for guarded pages");
    Guarded::Pages pages{map_between_guards(file, size, PROT_READ | PROT_WRITE),
                         map_between_guards(file, size, PROT_READ), size};
    close(file);
    return pages;
}

/// The pages in nobody's use, by their size.
std::map<std::size_t, std::vector<Guarded::Pages>> &idle()
{
    static auto *pool = new std::map<std::size_t, std::vector<Guarded::Pages>>;
    return *pool;
}

/// Room for the bytes and the odd address's first byte, unless they are exact pages.
Guarded::Pages take_pages(std::size_t size, Place place)
{
    const std::size_t wanted = size + (place == Place::odd ? 1 : 0);
    const std::size_t rounded = std::max<std::size_t>(1, (wanted + page_size() - 1) / page_size()) * page_size();
    std::vector<Guarded::Pages> &pool = idle()[rounded];
    if (pool.empty())
        return new_pages(rounded);
    const Guarded::Pages pages = pool.back();
    pool.pop_back();
    return pages;
}

} // namespace

Guarded::Guarded(std::size_t size, Place place, std::uint8_t fill)
    : pages_(take_pages(size, place)), offset_(place == Place::end ? pages_.size - size : 1), size_(size)
{
    std::memset(before().data(), canary, before().size());
    std::memset(behind().data(), canary, behind().size());
    std::memset(data(), fill, size_);
}

Guarded::Guarded(std::span<const std::uint8_t> content, Place place) : Guarded(content.size(), place)
{
    std::ranges::copy(content, data());
}

Guarded::Guarded(Guarded &&other) noexcept
    : pages_(std::exchange(other.pages_, {})), offset_(other.offset_), size_(other.size_)
{
}

Guarded::~Guarded()
{
    if (pages_.writable != nullptr)
        idle()[pages_.size].push_back(pages_);
}

std::span<std::uint8_t> Guarded::before()
{
    const std::size_t reach = std::min(offset_, canary_reach);
    return {pages_.writable + offset_ - reach, reach};
}

std::span<std::uint8_t> Guarded::behind()
{
    const std::size_t end = offset_ + size_;
    return {pages_.writable + end, std::min(pages_.size - end, canary_reach)};
}

bool Guarded::intact() const
{
    auto &self = const_cast<Guarded &>(*this);
    return std::memcmp(self.before().data(), canaries.data(), self.before().size()) == 0 &&
           std::memcmp(self.behind().data(), canaries.data(), self.behind().size()) == 0;
}

void *forbidden_address()
{
    static std::uint8_t *address = map_between_guards(-1, 0, PROT_NONE);
    return address + 16;
}

namespace {

sigjmp_buf escape;
volatile std::sig_atomic_t escaping = 0;
void *volatile fault_address = nullptr;

void on_fault(int signal, siginfo_t *info, void *)
{
    if (escaping == 0) {
        static_cast<void>(std::signal(signal, SIG_DFL));
        return;
    }
    fault_address = info->si_addr;
    siglongjmp(escape, signal);
}

void catch_faults()
{
    struct sigaction action {};
    action.sa_sigaction = on_fault;
    action.sa_flags = SA_SIGINFO;
    sigemptyset(&action.sa_mask);
    for (const int signal : {SIGSEGV, SIGBUS, SIGFPE})
        sigaction(signal, &action, nullptr);
}

} // namespace

std::string memory_fault(const std::function<void()> &action)
{
    static const bool ready = (catch_faults(), true);
    static_cast<void>(ready);
    struct Watch {
        ~Watch() { escaping = 0; }
    } watch;
    if (const int signal = sigsetjmp(escape, 1); signal != 0) {
        std::ostringstream text;
        text << "touched memory that is not its own, at " << fault_address << " (signal " << signal << ")";
        return text.str();
    }
    escaping = 1;
    action();
    return {};
}

} // namespace bgpdt::test
