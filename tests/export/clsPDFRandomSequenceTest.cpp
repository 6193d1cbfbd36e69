#include "tests/export/fuzz/MemberSequence.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <vector>

namespace zw {
namespace {

class clsPDFRandomSequence : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_folder = std::filesystem::temp_directory_path() /
                   ("clsPDFRandomSequence-" + std::to_string(std::random_device{}()));
        std::filesystem::create_directories(m_folder);
    }
    void TearDown() override { std::filesystem::remove_all(m_folder); }

    std::filesystem::path m_folder;
};

// The fuzz target's driver, replayed from a fixed seed so that every build (the sanitizer build above all)
// runs the same few hundred sequences without libFuzzer.
TEST_F(clsPDFRandomSequence, NoSequenceOfMemberCallsCrashesOrBreaksTheDocument)
{
    std::mt19937 random(20240229);
    for (int sequence = 0; sequence < 400; ++sequence) {
        std::vector<std::uint8_t> bytes(std::uniform_int_distribution<std::size_t>(1, 3000)(random));
        for (auto& byte : bytes)
            byte = static_cast<std::uint8_t>(random());
        // The 4000 x 4000 picture takes a while; a few sequences may draw it.
        const fuzz::SequenceOptions options{m_folder, /*allowHugePicture=*/sequence < 8};
        SCOPED_TRACE("sequence " + std::to_string(sequence));
        EXPECT_EQ(fuzz::runMemberSequence(bytes.data(), bytes.size(), options), "");
    }
}

} // namespace
} // namespace zw
