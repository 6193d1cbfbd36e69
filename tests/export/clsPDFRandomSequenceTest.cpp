#include "tests/export/fuzz/MemberSequence.h"

#include <gtest/gtest.h>

#include "tests/app/TempFolder.h"

#include <random>
#include <vector>

namespace zw {
namespace {

// The fuzz target's driver, replayed from a fixed seed so that every build (the sanitizer build above all)
// runs the same few hundred sequences without libFuzzer.
TEST(clsPDFRandomSequence, NoSequenceOfMemberCallsCrashesOrBreaksTheDocument)
{
    const test::TempFolder folder;
    std::mt19937 random(20240229);
    for (int sequence = 0; sequence < 400; ++sequence) {
        std::vector<std::uint8_t> bytes(std::uniform_int_distribution<std::size_t>(1, 3000)(random));
        for (auto& byte : bytes)
            byte = static_cast<std::uint8_t>(random());
        // The 4000 x 4000 picture takes a while; a few sequences may draw it.
        const fuzz::SequenceOptions options{folder.path(), /*allowHugePicture=*/sequence < 8};
        SCOPED_TRACE("sequence " + std::to_string(sequence));
        EXPECT_EQ(fuzz::runMemberSequence(bytes.data(), bytes.size(), options), "");
    }
}

} // namespace
} // namespace zw
