#include "tests/export/fuzz/MemberSequence.h"

#include "core/RunError.h"
#include "export/clsPDF.h"
#include "tests/export/clsPDFTestAccess.h"

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <exception>
#include <fstream>
#include <functional>

namespace zw::fuzz {
namespace {

constexpr std::array<std::int16_t, 12> kSpecialCoordinates = {0,      1,     -1,  32767, -32768, 32766,
                                                              -32767, 16384, 842, 596,   -842,   100};
constexpr std::array<float, 9> kSpecialReals = {0.0f,  0.5f,     1.0f,      -1.0f, 3.14159265f,
                                                1e30f, -2.5e-4f, HUGE_VALF, NAN};
// Separators, form feeds and the characters that need escaping.
constexpr std::array<std::string_view, 10> kTextPieces = {"\r\n", "\n\r", "\r\r", "\n", "\r",
                                                          "\f",   "(",    ")",    "\\", "x"};
constexpr std::size_t kMaxCalls = 256;

class ByteSource
{
public:
    ByteSource(const std::uint8_t* data, std::size_t size) : m_data(data), m_size(size) {}

    bool exhausted() const { return m_position >= m_size; }
    std::uint8_t byte() { return m_position < m_size ? m_data[m_position++] : 0; }
    std::uint16_t word() { return static_cast<std::uint16_t>(byte() | byte() << 8); }
    std::uint32_t longWord() { return word() | static_cast<std::uint32_t>(word()) << 16; }
    std::int32_t color()
    {
        return byte() % 2 == 0 ? 0x010101 * byte() : static_cast<std::int32_t>(longWord());
    }

    std::int16_t coordinate()
    {
        const std::uint8_t kind = byte() % 4;
        if (kind == 0)
            return kSpecialCoordinates[byte() % kSpecialCoordinates.size()];
        return kind == 1 ? static_cast<std::int8_t>(byte()) : static_cast<std::int16_t>(word());
    }

    // Several coordinates read in order, which the arguments of one call would not be.
    template <std::size_t N> std::array<std::int16_t, N> coordinates()
    {
        std::array<std::int16_t, N> values;
        for (std::int16_t& value : values)
            value = coordinate();
        return values;
    }

    float real()
    {
        return byte() % 2 == 0 ? kSpecialReals[byte() % kSpecialReals.size()]
                               : std::bit_cast<float>(longWord());
    }

    std::int32_t mode()
    {
        const std::uint8_t b = byte();
        return b < 200 ? static_cast<std::int32_t>(b % 6) - 2 : static_cast<std::int32_t>(longWord());
    }

    // Empty, separators and escapes, any bytes, or (for one byte value: it takes a while under the
    // sanitizers) a megabyte of one line with a line break now and then.
    std::string text()
    {
        const std::uint8_t kind = byte();
        if (kind == 0xFE) {
            std::string huge(std::size_t{1} << 20, static_cast<char>('a' + byte() % 26));
            for (std::size_t at = byte(); at < huge.size(); at += 65536)
                huge[at] = '\n';
            return huge;
        }
        std::string text;
        for (int count = kind % 4 == 0 ? 0 : byte() % 40; count > 0; --count) {
            if (kind % 4 == 1)
                text += kTextPieces[byte() % kTextPieces.size()];
            else
                text += static_cast<char>(byte());
        }
        return text;
    }

    // 0 x 0 to 2, 1 x 1, up to 64 x 64, or (at most once a sequence) 4000 x 4000; of one colour, of noise, or
    // of runs of varying length over sixteen levels, the case the run-length encoder has most rules for.
    Bitmap picture(bool& hugeAllowed)
    {
        Bitmap picture;
        const std::uint8_t kind = byte();
        if (kind == 0xFF && hugeAllowed) {
            hugeAllowed = false;
            picture.width = picture.height = 4000;
        } else if (kind % 4 == 1) {
            picture.height = byte() % 3;
        } else {
            const int largest = kind % 4 == 2 ? 1 : 64;
            picture.width = 1 + byte() % largest;
            picture.height = 1 + byte() % largest;
        }
        picture.pixels.resize(static_cast<std::size_t>(picture.width) *
                              static_cast<std::size_t>(picture.height) * 3);
        const std::uint8_t pattern = byte() % 3;
        const std::size_t runLength = pattern == 0   ? picture.pixels.size()
                                      : pattern == 1 ? 1
                                                     : 1 + byte() % 200;
        std::uint32_t state = longWord() | 1;
        for (std::size_t i = 0; i < picture.pixels.size(); ++i) {
            if (i % runLength == 0)
                state = state * 1664525u + 1013904223u;
            picture.pixels[i] = static_cast<std::uint8_t>(state >> (pattern == 2 ? 28 : 24));
        }
        return picture;
    }

private:
    const std::uint8_t* m_data;
    std::size_t m_size;
    std::size_t m_position = 0;
};

// PDF RunLengthDecode up to its end-of-data byte or its end.
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

std::string checkRunLength(const Bitmap& picture)
{
    const std::string_view input(reinterpret_cast<const char*>(picture.pixels.data()), picture.pixels.size());
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
    at = static_cast<std::size_t>(result.ptr - text.data());
    return result.ec == std::errc();
}

} // namespace

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
        const auto [x, y, w, h] = source.coordinates<4>();
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
            const auto [x, y, w, h] = source.coordinates<4>();
            pdf.DrawBox(x, y, w, h, source.mode());
        },
        [&] {
            const auto [x, y, r] = source.coordinates<3>();
            pdf.DrawCircle(x, y, r, source.mode());
        },
        [&] {
            const auto [x1, y1, x2, y2, x3, y3] = source.coordinates<6>();
            pdf.DrawCurveTo(x1, y1, x2, y2, x3, y3);
        },
        [&] {
            const auto [x1, y1, x2, y2] = source.coordinates<4>();
            pdf.DrawLine(x1, y1, x2, y2);
        },
        [&] {
            const auto [x, y] = source.coordinates<2>();
            pdf.DrawLineTo(x, y);
        },
        drawPicture,
        drawPicture,
        [&] { pdf.DrawShape(source.mode()); },
        [&] {
            const auto [x, y] = source.coordinates<2>();
            const std::string text = source.text();
            pdf.DrawText(x, y, text, source.byte() % 2 == 0 ? 0.0f : source.real());
        },
        [&] {
            const auto [x, y] = source.coordinates<2>();
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
            pdf.SavePDF(options.scratchFolder / (source.byte() % 4 == 0 ? "missing/x.pdf" : "saved.pdf"));
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
        [&] { problem = checkRunLength(source.picture(hugeAllowed)); },
    };

    // A RunError, the run-time fault of the old program, is an accepted outcome of any call.
    const auto trap = [&problem](const std::function<void()>& call) {
        try {
            call();
        } catch (const RunError&) {
        } catch (const std::exception& error) {
            problem = std::string("unexpected exception: ") + error.what();
        }
    };
    for (std::size_t call = 0; call < kMaxCalls && !source.exhausted() && problem.empty(); ++call)
        trap(calls[source.byte() % std::size(calls)]);
    if (problem.empty())
        trap(check);
    return problem;
}

} // namespace zw::fuzz
