#include "tests/export/fuzz/MemberSequence.h"

#include "core/RunError.h"
#include "export/clsPDF.h"
#include "tests/export/clsPDFTestAccess.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <exception>
#include <fstream>
#include <functional>
#include <limits>

namespace zw::fuzz {
namespace {

constexpr std::array<std::int16_t, 12> kSpecialCoordinates = {0,      1,     -1,  32767, -32768, 32766,
                                                              -32767, 16384, 842, 596,   -842,   100};
constexpr std::size_t kMaxCalls = 256;
constexpr std::size_t kHugeTextSize = 1 << 20;

class ByteSource
{
public:
    ByteSource(const std::uint8_t* data, std::size_t size) : m_data(data), m_size(size) {}

    bool exhausted() const { return m_position >= m_size; }
    std::uint8_t byte() { return m_position < m_size ? m_data[m_position++] : 0; }
    std::uint16_t word() { return static_cast<std::uint16_t>(byte() | byte() << 8); }
    std::uint32_t longWord() { return word() | static_cast<std::uint32_t>(word()) << 16; }

    std::int16_t coordinate()
    {
        switch (byte() % 4) {
        case 0:
            return kSpecialCoordinates[byte() % kSpecialCoordinates.size()];
        case 1:
            return static_cast<std::int8_t>(byte());
        default:
            return static_cast<std::int16_t>(word());
        }
    }

    std::int32_t color()
    {
        switch (byte() % 4) {
        case 0:
            return 0;
        case 1:
            return 0x808080;
        default:
            return static_cast<std::int32_t>(longWord());
        }
    }

    float real()
    {
        constexpr std::array<float, 9> special = {0.0f,
                                                  0.5f,
                                                  1.0f,
                                                  -1.0f,
                                                  3.14159265f,
                                                  1e30f,
                                                  -2.5e-4f,
                                                  std::numeric_limits<float>::infinity(),
                                                  std::numeric_limits<float>::quiet_NaN()};
        if (byte() % 2 == 0)
            return special[byte() % special.size()];
        const std::uint32_t bits = longWord();
        float value;
        static_assert(sizeof value == sizeof bits);
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }

    std::int32_t mode()
    {
        const std::uint8_t b = byte();
        return b < 200 ? static_cast<std::int32_t>(b % 6) - 2 : static_cast<std::int32_t>(longWord());
    }

    std::string text()
    {
        // The huge text takes a while under the sanitizers; one byte value of 256 asks for it.
        const std::uint8_t kind = byte();
        switch (kind == 0xFE ? 1 : kind % 8 == 1 ? 0 : kind % 8) {
        case 0:
            return {};
        case 1: {
            // A huge text, mostly one line, with a line break now and then.
            std::string huge(kHugeTextSize, static_cast<char>('a' + byte() % 26));
            for (std::size_t at = byte(); at < huge.size(); at += 65536)
                huge[at] = '\n';
            return huge;
        }
        case 2: {
            // Separators, form feeds and the characters that need escaping.
            constexpr std::array<std::string_view, 10> pieces = {"\r\n", "\n\r", "\r\r", "\n", "\r",
                                                                 "\f",   "(",    ")",    "\\", "x"};
            std::string mixed;
            for (int count = byte() % 24; count > 0; --count)
                mixed += pieces[byte() % pieces.size()];
            return mixed;
        }
        default: {
            std::string bytes;
            for (int count = byte() % 40; count > 0; --count)
                bytes += static_cast<char>(byte());
            return bytes;
        }
        }
    }

    Bitmap picture(bool& hugeAllowed)
    {
        Bitmap picture;
        // Not 0, which is what an exhausted input gives.
        const std::uint8_t kind = byte();
        if (kind == 0xFF && hugeAllowed) {
            hugeAllowed = false;
            picture.width = 4000;
            picture.height = 4000;
        } else if (kind % 8 == 1) {
            picture.width = 0;
            picture.height = byte() % 3;
        } else if (kind % 8 == 2) {
            picture.width = 1;
            picture.height = 1;
        } else {
            picture.width = 1 + byte() % 64;
            picture.height = 1 + byte() % 64;
        }
        picture.pixels.resize(static_cast<std::size_t>(picture.width) *
                              static_cast<std::size_t>(picture.height) * 3);
        fillPixels(picture.pixels);
        return picture;
    }

private:
    void fillPixels(std::vector<std::uint8_t>& pixels)
    {
        const std::uint8_t pattern = byte();
        std::uint32_t state = longWord() | 1;
        const std::size_t runLength = 1 + byte() % 200;
        for (std::size_t i = 0; i < pixels.size(); ++i) {
            switch (pattern % 4) {
            case 0:
                pixels[i] = pattern;
                break;
            case 1:
                state = state * 1664525u + 1013904223u;
                pixels[i] = static_cast<std::uint8_t>(state >> 24);
                break;
            default:
                // Runs of varying length, the case the encoder has most rules for.
                if (i % runLength == 0)
                    state = state * 1664525u + 1013904223u;
                pixels[i] = static_cast<std::uint8_t>(state >> 28);
                break;
            }
        }
    }

    const std::uint8_t* m_data;
    std::size_t m_size;
    std::size_t m_position = 0;
};

std::string checkRunLength(std::string_view input)
{
    const std::string encoded = clsPDFTestAccess::CompressRunLength(input);
    if (encoded.size() > input.size() * 128 / 127 + 2)
        return "run-length output longer than its buffer";
    if (decodeRunLength(encoded) != input)
        return "run-length output does not decode to its input";
    return {};
}

bool readDecimal(std::string_view text, std::size_t& at, std::int64_t& value)
{
    const auto result = std::from_chars(text.data() + at, text.data() + text.size(), value);
    if (result.ec != std::errc())
        return false;
    at = static_cast<std::size_t>(result.ptr - text.data());
    return true;
}

} // namespace

std::string decodeRunLength(std::string_view encoded)
{
    std::string decoded;
    std::size_t at = 0;
    while (at < encoded.size()) {
        const auto length = static_cast<unsigned char>(encoded[at++]);
        if (length == 128)
            break;
        if (length < 128) {
            decoded += encoded.substr(at, std::size_t{length} + 1);
            at += std::size_t{length} + 1;
        } else if (at < encoded.size()) {
            decoded.append(257 - std::size_t{length}, encoded[at++]);
        }
    }
    return decoded;
}

std::string checkDocumentStructure(std::string_view document)
{
    if (!document.starts_with("%PDF-1.1\r%\xE2\xE3\xCF\xD3\r1 0 obj\r"))
        return "document does not start with the fixed head";
    if (!document.ends_with("\r%%EOF\r"))
        return "document does not end with %%EOF";
    const std::size_t startxref = document.rfind("\rstartxref\r");
    if (startxref == std::string_view::npos)
        return "no startxref";
    std::size_t at = startxref + 11;
    std::int64_t xref = 0;
    if (!readDecimal(document, at, xref) || xref < 0 || static_cast<std::size_t>(xref) >= document.size())
        return "startxref is no offset in the document";
    at = static_cast<std::size_t>(xref);
    if (document.substr(at, 7) != "xref\r0 ")
        return "startxref does not point at the cross-reference table";
    at += 7;
    std::int64_t size = 0;
    if (!readDecimal(document, at, size) || size < 6 || document.substr(at, 20) != "\r0000000000 65535 f\r")
        return "cross-reference table head is malformed";
    at += 20;
    for (std::int64_t object = 1; object < size; ++object, at += 19) {
        const std::string_view entry = document.substr(at, 19);
        if (entry.size() != 19 || entry.substr(10) != " 00000 n\r")
            return "cross-reference entry " + std::to_string(object) + " is not 19 bytes";
        std::size_t digits = 0;
        std::int64_t offset = 0;
        if (!readDecimal(entry.substr(0, 10), digits, offset) || digits != 10)
            return "cross-reference entry " + std::to_string(object) + " has no 10-digit offset";
        const std::string header = std::to_string(object) + " 0 obj\r";
        if (document.substr(static_cast<std::size_t>(offset), header.size()) != header)
            return "cross-reference entry " + std::to_string(object) + " does not point at its object";
    }
    const std::string trailer =
        "trailer\r<<\r/Size " + std::to_string(size) + "\r/Root 2 0 R\r/Info 1 0 R\r>>\r";
    if (document.substr(at, trailer.size()) != trailer || at + trailer.size() != startxref + 1)
        return "trailer is malformed";
    return {};
}

std::string runMemberSequence(const std::uint8_t* data, std::size_t size, const SequenceOptions& options)
{
    ByteSource source(data, size);
    bool hugeAllowed = options.allowHugePicture;
    clsPDF pdf([] { return LocalDateTime{2024, 2, 29, 23, 59, 58}; });
    const std::filesystem::path savedFile = options.scratchFolder / "saved.pdf";
    const std::filesystem::path textFile = options.scratchFolder / "text.txt";
    std::string problem;

    // Handlers draw on the page being made, as a caller's header and footer would.
    const auto handler = [&pdf](std::int16_t y) -> std::function<void()> {
        return [&pdf, y] {
            pdf.DrawLine(10, y, 200, y);
            pdf.DrawBox(5, y, 20, 10, clsPDF::ModeFill);
        };
    };

    const auto drawPicture = [&] {
        const auto x = source.coordinate(), y = source.coordinate();
        const auto w = source.coordinate(), h = source.coordinate();
        const bool gray = source.byte() % 2 == 0;
        pdf.DrawPicture(x, y, w, h, source.picture(hugeAllowed), gray);
    };
    const auto printLine = [&] { pdf.PrintLine(source.text()); };
    const auto printText = [&] { pdf.PrintText(source.text()); };
    const auto check = [&] { problem = checkDocumentStructure(pdf.Value()); };
    // One entry per call; pictures, printing and checks come more than once to be chosen more often.
    const std::function<void()> calls[] = {
        [&] { pdf.setDrawColor(source.color()); },
        [&] { pdf.setDrawWidth(source.real()); },
        [&] { pdf.setDropBlankPages(source.byte() % 2 == 0); },
        [&] { pdf.setFillColor(source.color()); },
        [&] { pdf.setFillMode(source.mode()); },
        [&] { pdf.setFontSize(source.coordinate()); },
        [&] { pdf.setHeight(source.coordinate()); },
        [&] { pdf.setLeftMargin(source.coordinate()); },
        [&] {
            pdf.setLinesPerPage(
                static_cast<std::int16_t>(source.byte() % 8 == 0 ? source.coordinate() : source.byte() % 80));
        },
        [&] { pdf.setNewPageString(source.text()); },
        [&] { pdf.setOrientation(source.byte() % 3); },
        [&] { pdf.setPaperSize(static_cast<std::int32_t>(source.byte() % 12) - 1); },
        [&] { pdf.setTopMargin(source.coordinate()); },
        [&] { pdf.setWidth(source.coordinate()); },
        [&] {
            pdf.Clear(static_cast<std::int16_t>(source.byte() % 20),
                      static_cast<std::int16_t>(source.byte() % 20));
        },
        [&] {
            const auto x = source.coordinate(), y = source.coordinate();
            const auto w = source.coordinate(), h = source.coordinate();
            pdf.DrawBox(x, y, w, h, source.mode());
        },
        [&] {
            const auto x = source.coordinate(), y = source.coordinate(), r = source.coordinate();
            pdf.DrawCircle(x, y, r, source.mode());
        },
        [&] {
            const auto x1 = source.coordinate(), y1 = source.coordinate(), x2 = source.coordinate();
            const auto y2 = source.coordinate(), x3 = source.coordinate(), y3 = source.coordinate();
            pdf.DrawCurveTo(x1, y1, x2, y2, x3, y3);
        },
        [&] {
            const auto x1 = source.coordinate(), y1 = source.coordinate();
            const auto x2 = source.coordinate(), y2 = source.coordinate();
            pdf.DrawLine(x1, y1, x2, y2);
        },
        [&] {
            const auto x = source.coordinate(), y = source.coordinate();
            pdf.DrawLineTo(x, y);
        },
        drawPicture,
        drawPicture,
        [&] { pdf.DrawShape(source.mode()); },
        [&] {
            const auto x = source.coordinate(), y = source.coordinate();
            const std::string text = source.text();
            pdf.DrawText(x, y, text, source.byte() % 2 == 0 ? 0.0f : source.real());
        },
        [&] {
            const auto x = source.coordinate(), y = source.coordinate();
            pdf.MoveTo(x, y);
        },
        [&] {
            pdf.NewPage(static_cast<std::int16_t>(source.byte() % 16),
                        static_cast<std::int16_t>(source.byte() % 16));
        },
        printLine,
        printLine,
        printLine,
        printText,
        printText,
        [&] {
            std::ofstream(textFile, std::ios::binary | std::ios::trunc) << source.text();
            pdf.PrintFile(source.byte() % 4 == 0 ? options.scratchFolder / "missing.txt" : textFile);
        },
        check,
        check,
        [&] {
            pdf.SavePDF(source.byte() % 4 == 0 ? options.scratchFolder / "missing" / "x.pdf" : savedFile);
        },
        [&] { pdf.PageStarted = source.byte() % 2 == 0 ? handler(30) : nullptr; },
        [&] { pdf.PageFinished = source.byte() % 2 == 0 ? handler(800) : nullptr; },
        [&] {
            std::string bytes = "BM";
            for (int count = source.byte() * 2; count > 0; --count)
                bytes += static_cast<char>(source.byte());
            const Bitmap bitmap = parseBitmapFile(bytes);
            if (bitmap.pixels.size() != static_cast<std::size_t>(bitmap.width) * bitmap.height * 3)
                problem = "bitmap reader gave a picture of the wrong size";
        },
        [&] {
            const Bitmap picture = source.picture(hugeAllowed);
            problem = checkRunLength(std::string_view(reinterpret_cast<const char*>(picture.pixels.data()),
                                                      picture.pixels.size()));
        },
    };

    for (std::size_t call = 0; call < kMaxCalls && !source.exhausted() && problem.empty(); ++call) {
        try {
            calls[source.byte() % std::size(calls)]();
        } catch (const RunError&) {
            // The run-time fault of the old program: an accepted outcome.
        } catch (const std::exception& error) {
            problem = std::string("unexpected exception: ") + error.what();
        }
    }
    if (problem.empty()) {
        try {
            problem = checkDocumentStructure(pdf.Value());
        } catch (const RunError&) {
        } catch (const std::exception& error) {
            problem = std::string("unexpected exception: ") + error.what();
        }
    }
    return problem;
}

} // namespace zw::fuzz
