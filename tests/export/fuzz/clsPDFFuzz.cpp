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
    static const zw::fuzz::SequenceOptions options{scratchFolder(), /*allowHugePicture=*/true};
    const std::string problem = zw::fuzz::runMemberSequence(data, size, options);
    if (!problem.empty()) {
        std::fprintf(stderr, "clsPDF fault: %s\n", problem.c_str());
        std::abort();
    }
    return 0;
}
