// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "tool_run.hpp"

#include <dlfcn.h>
#include <sanitizer/common_interface_defs.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "property.hpp"

int bgpdt_main(int argc, char **argv); // the tool's main(), under another name

namespace bgpdt::fuzzing {

namespace {

/// A file in memory in the place of a standard descriptor, until it goes.
class Replaced {
public:
    explicit Replaced(int number, std::string_view content = {})
        : number_(number), kept_(dup(number)), file_(memfd_create("standard", MFD_CLOEXEC))
    {
        const bool written = write(file_, content.data(), content.size()) == static_cast<ssize_t>(content.size());
        require(kept_ >= 0 && written && lseek(file_, 0, SEEK_SET) == 0 && dup2(file_, number_) == number_,
                "standard descriptors can be replaced");
    }
    ~Replaced()
    {
        dup2(kept_, number_);
        close(kept_);
        close(file_);
    }
    Replaced(const Replaced &) = delete;
    Replaced &operator=(const Replaced &) = delete;

    std::string content() const
    {
        std::string text(static_cast<std::size_t>(lseek(file_, 0, SEEK_END)), '\0');
        const ssize_t size = pread(file_, text.data(), text.size(), 0);
        text.resize(size < 0 ? 0 : static_cast<std::size_t>(size));
        return text;
    }

private:
    int number_;
    int kept_;
    int file_;
};

/// The plug-in's counters are libFuzzer's: it stays, whatever the tool does.
void keep_plugin()
{
    const auto here = std::filesystem::canonical("/proc/self/exe").parent_path();
    void *plugin = nullptr;
    for (const char *folder : {".", "../src"})
        if (plugin == nullptr)
            plugin = dlopen((here / folder / "libbgp_datatype.so").c_str(), RTLD_NOW | RTLD_NODELETE);
    require(plugin != nullptr, "the plug-in stands where the tool finds it");
}

} // namespace

Outcome run_tool(const std::vector<std::string> &words, std::string_view input)
{
    std::vector<std::string> all{"bgpdt"};
    all.insert(all.end(), words.begin(), words.end());
    std::vector<char *> arguments;
    for (std::string &word : all)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    const Replaced in(STDIN_FILENO, input);
    const Replaced out(STDOUT_FILENO);
    const Replaced err(STDERR_FILENO);
    const int status = bgpdt_main(static_cast<int>(all.size()), arguments.data());
    std::fflush(stdout);
    return {status, out.content(), err.content()};
}

void prepare_tool()
{
    keep_plugin();
    __sanitizer_set_report_fd(reinterpret_cast<void *>(static_cast<std::intptr_t>(dup(STDERR_FILENO))));
    std::string folder = std::filesystem::temp_directory_path() / "bgpdt-fuzz-XXXXXX";
    require(mkdtemp(folder.data()) != nullptr && chdir(folder.c_str()) == 0 && rmdir(folder.c_str()) == 0,
            "there is an empty folder");
}

} // namespace bgpdt::fuzzing
