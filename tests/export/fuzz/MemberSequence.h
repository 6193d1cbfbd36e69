#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace zw::fuzz {

struct SequenceOptions
{
    // Where SavePDF and PrintFile put their files; the folder must exist.
    std::filesystem::path scratchFolder;
    // Whether a 4000 x 4000 picture may be drawn (at most one per sequence: it takes a while).
    bool allowHugePicture = true;
};

// Plays the bytes as a sequence of clsPDF member calls with arguments taken from the bytes: coordinates
// around the 16-bit limits, empty and huge texts, pictures from 0 x 0 to 4000 x 4000, event handlers that
// draw. A RunError is an accepted outcome of any call. Returns an empty string, or what was found wrong:
// another exception, a document whose cross-reference table does not point at its objects, a run-length
// encoding that does not decode to its input.
std::string runMemberSequence(const std::uint8_t* data, std::size_t size, const SequenceOptions& options);

// The structural checks that every finished document must pass; empty when it does.
std::string checkDocumentStructure(std::string_view document);

} // namespace zw::fuzz
