// libFuzzer target: random sequences of clsPDF member calls under the sanitizers.
#include "tests/export/fuzz/MemberSequence.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>

namespace {

std::filesystem::path scratchFolder()
{
    auto folder =
        std::filesystem::temp_directory_path() / ("clsPDFFuzz-" + std::to_string(std::random_device{}()));
    std::filesystem::create_directories(folder);
    return folder;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const std::filesystem::path folder = scratchFolder();
    // A 4000 x 4000 picture takes seconds under the sanitizers; one execution in 256 may draw it, the first
    // always, so that a single input given to reproduce a fault takes the same path.
    static unsigned executions = 0;
    const zw::fuzz::SequenceOptions options{folder, /*allowHugePicture=*/executions++ % 256 == 0};
    const std::string problem = zw::fuzz::runMemberSequence(data, size, options);
    if (!problem.empty()) {
        std::fprintf(stderr, "clsPDF fault: %s\n", problem.c_str());
        std::abort();
    }
    return 0;
}
