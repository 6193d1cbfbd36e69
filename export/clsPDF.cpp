#include "export/clsPDF.h"

#include "app/AtomicFile.h"
#include "app/TextFile.h"
#include "core/CodePage.h"
#include "core/RunError.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <iterator>
#include <limits>

namespace zw {
namespace {

constexpr std::string_view kLineEnd = "\r";
constexpr std::int32_t kPageTableStart = 16;
constexpr std::int32_t kOffsetTableStart = 64;
constexpr std::int32_t kPageTreeObject = 3;

struct PaperFormat
{
    std::int16_t width;
    std::int16_t height;
};
// PaperSize 1 to 8: A0 to A7, portrait, in points.
constexpr std::array<PaperFormat, 8> kPaperFormats = {
    {{2384, 3371}, {1685, 2384}, {1192, 1685}, {842, 1192}, {596, 842}, {421, 596}, {298, 421}, {210, 298}}};

std::int16_t checked16(std::int64_t value)
{
    if (value < std::numeric_limits<std::int16_t>::min() || value > std::numeric_limits<std::int16_t>::max())
        throw RunError::overflow();
    return static_cast<std::int16_t>(value);
}

std::int32_t checked32(std::int64_t value)
{
    if (value < std::numeric_limits<std::int32_t>::min() || value > std::numeric_limits<std::int32_t>::max())
        throw RunError::overflow();
    return static_cast<std::int32_t>(value);
}

std::int16_t add16(std::int16_t a, std::int16_t b)
{
    return checked16(std::int64_t{a} + b);
}
std::int16_t sub16(std::int16_t a, std::int16_t b)
{
    return checked16(std::int64_t{a} - b);
}

std::string decimal(std::int64_t value)
{
    return std::to_string(value);
}

// The operator of a FillMode or Mode value; empty for values outside the table.
std::string_view paintOperator(std::int32_t mode)
{
    switch (mode) {
    case clsPDF::ModeFill:
        return "f";
    case clsPDF::ModeStroke:
        return "S";
    case clsPDF::ModeCloseFillStroke:
        return "b";
    case clsPDF::ModeCloseStroke:
        return "s";
    default:
        return {};
    }
}

// Both object tables count from 1 and double past the index that no longer fits.
void growTable(std::vector<std::int32_t>& table, std::int32_t index)
{
    if (static_cast<std::size_t>(index) >= table.size())
        table.resize(2 * static_cast<std::size_t>(index) + 1);
}

// Appends to a buffer whose used part is given by a separate 32-bit length. When the buffer is too short it
// grows by as many bytes as the new length, so that appending stays amortised constant.
void appendBytes(std::string& buffer, std::int32_t& length, std::string_view text)
{
    if (text.size() > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max() - length))
        throw RunError::overflow();
    const auto newLength = static_cast<std::int32_t>(length + static_cast<std::int64_t>(text.size()));
    if (static_cast<std::size_t>(newLength) > buffer.size())
        buffer.append(static_cast<std::size_t>(newLength), ' ');
    if (!text.empty())
        std::memcpy(buffer.data() + length, text.data(), text.size());
    length = newLength;
}

std::string toLower(std::string text)
{
    for (char& c : text) {
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    }
    return text;
}

} // namespace

LocalDateTime currentLocalDateTime()
{
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    localtime_r(&now, &parts);
    return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec};
}

clsPDF::clsPDF(LocalClock clock, std::string producerHost)
    : m_clock(std::move(clock)), m_producerHost(std::move(producerHost))
{
    m_dropBlankPages = true;
    m_fontSize = 10;
    m_newPageString = "\f";
    setPaperSize(5);
    m_linesPerPage = 72;
    m_leftMargin = 80;
    m_topMargin = 60;
    setFillMode(ModeStroke);
    m_pageObjects.assign(kPageTableStart + 1, 0);
    m_objectOffsets.assign(kOffsetTableStart + 1, 0);
    Clear(0, 0);
}

void clsPDF::setDrawColor(std::int32_t color)
{
    if (color == m_drawColor)
        return;
    FlushPendingOperator();
    m_drawColor = color;
    m_strokeDirty = true;
}

void clsPDF::setDrawWidth(float width)
{
    if (width == m_drawWidth)
        return;
    FlushPendingOperator();
    m_drawWidth = width;
    m_widthDirty = true;
}

void clsPDF::setFillColor(std::int32_t color)
{
    if (color == m_fillColor)
        return;
    FlushPendingOperator();
    m_fillColor = color;
    m_fillDirty = true;
}

void clsPDF::setFillMode(std::int32_t mode)
{
    m_fillMode = mode;
    FlushPendingOperator();
    SetPaintMode(mode);
}

void clsPDF::setHeight(std::int16_t height)
{
    m_paperHeight = height;
    m_paperSize = 0;
}

void clsPDF::setWidth(std::int16_t width)
{
    m_paperWidth = width;
    m_paperSize = 0;
}

void clsPDF::setPaperSize(std::int32_t size)
{
    m_paperSize = size;
    if (size >= 1 && size <= static_cast<std::int32_t>(kPaperFormats.size())) {
        m_paperWidth = kPaperFormats[static_cast<std::size_t>(size - 1)].width;
        m_paperHeight = kPaperFormats[static_cast<std::size_t>(size - 1)].height;
    }
}

void clsPDF::Clear(std::int16_t fontSize, std::int16_t linesPerPage)
{
    if (fontSize != 0)
        m_fontSize = fontSize;
    if (linesPerPage != 0)
        m_linesPerPage = linesPerPage;
    m_pageCount = 0;
    m_lineNumber = 0;
    m_objectCount = 0;
    m_documentLength = 0;
    m_pageLength = 0;
    WriteHeader();
    // Binding order: in a new object this flushes the "S" that FillMode 0 left pending into the emptied page
    // buffer, so the first page's stream starts with it. A later Clear has nothing pending here.
    SetPendingOperator({});
}

void clsPDF::DrawBox(std::int16_t x, std::int16_t y, std::int16_t width, std::int16_t height,
                     std::int32_t mode)
{
    SetPaintMode(mode);
    const std::int16_t bottom = sub16(sub16(Height(), height), y);
    AddPageLine(decimal(x) + ' ' + decimal(bottom) + ' ' + decimal(width) + ' ' + decimal(height) + " re");
}

void clsPDF::DrawCircle(std::int16_t x, std::int16_t y, std::int16_t radius, std::int32_t mode)
{
    // The control distance of a quarter circle; single precision and rounding half to even, as written.
    const float product = static_cast<float>(radius) * 0.5522847f;
    const std::int16_t k = checked16(static_cast<std::int64_t>(std::nearbyint(product)));
    FlushPendingOperator();
    MoveTo(x, add16(y, radius));
    DrawCurveTo(add16(x, k), add16(y, radius), add16(x, radius), add16(y, k), add16(x, radius), y);
    DrawCurveTo(add16(x, radius), sub16(y, k), add16(x, k), sub16(y, radius), x, sub16(y, radius));
    DrawCurveTo(sub16(x, k), sub16(y, radius), sub16(x, radius), sub16(y, k), sub16(x, radius), y);
    DrawCurveTo(sub16(x, radius), add16(y, k), sub16(x, k), add16(y, radius), x, add16(y, radius));
    DrawShape(mode);
}

void clsPDF::DrawCurveTo(std::int16_t x1, std::int16_t y1, std::int16_t x2, std::int16_t y2, std::int16_t x3,
                         std::int16_t y3)
{
    // The current point stays where it was: a later MoveTo to the curve's end is written, one to the old
    // point is dropped. Wanted.
    AddPageLine(decimal(x1) + ' ' + decimal(FlipY(y1)) + ' ' + decimal(x2) + ' ' + decimal(FlipY(y2)) + ' ' +
                decimal(x3) + ' ' + decimal(FlipY(y3)) + " c");
}

void clsPDF::DrawLine(std::int16_t x1, std::int16_t y1, std::int16_t x2, std::int16_t y2)
{
    SetPendingOperator("S");
    const std::int16_t flippedY2 = FlipY(y2);
    m_currentX = x2;
    m_currentY = flippedY2;
    AddPageLine(decimal(x1) + ' ' + decimal(FlipY(y1)) + " m " + decimal(x2) + ' ' + decimal(flippedY2) +
                " l");
}

void clsPDF::DrawLineTo(std::int16_t x, std::int16_t y)
{
    m_currentX = x;
    m_currentY = FlipY(y);
    AddPageLine(decimal(x) + ' ' + decimal(m_currentY) + " l");
}

void clsPDF::DrawPicture(std::int16_t x, std::int16_t y, std::int16_t width, std::int16_t height,
                         const std::filesystem::path& pictureFile, bool gray)
{
    DrawPicture(x, y, width, height, readBitmapFile(pictureFile), gray);
}

void clsPDF::DrawPicture(std::int16_t x, std::int16_t y, std::int16_t width, std::int16_t height,
                         const Bitmap& picture, bool gray)
{
    if (picture.width < 0 || picture.height < 0 ||
        picture.pixels.size() !=
            static_cast<std::uint64_t>(picture.width) * static_cast<std::uint64_t>(picture.height) * 3)
        throw RunError::invalidPicture();
    // A negative size keeps its sign in the matrix, which mirrors the picture around its own box.
    if (width < 0)
        x = sub16(x, width);
    if (height < 0)
        y = sub16(y, height);
    const std::int16_t bottom = sub16(sub16(Height(), y), height);

    // Colour pixels are already the bytes to write: red, green, blue, rows from the top.
    std::string grayLevels;
    std::string_view raw(reinterpret_cast<const char*>(picture.pixels.data()), picture.pixels.size());
    if (gray) {
        grayLevels.resize(picture.pixels.size() / 3);
        const std::uint8_t* in = picture.pixels.data();
        for (char& out : grayLevels) {
            out = static_cast<char>((77u * in[0] + 151u * in[1] + 28u * in[2] + 127u) / 256u);
            in += 3;
        }
        raw = grayLevels;
    }
    const std::string compressed = CompressRunLength(raw);
    // The "/F /RL" line costs 7 bytes and the end-of-data byte one; raw data wins a tie.
    const bool keepRaw =
        static_cast<std::int64_t>(compressed.size()) - 1 + 7 >= static_cast<std::int64_t>(raw.size());

    FlushPendingOperator();
    AddPageLine("q");
    AddPageLine(decimal(width) + " 0 0 " + decimal(height) + ' ' + decimal(x) + ' ' + decimal(bottom) +
                " cm");
    AddPageLine("BI");
    AddPageLine("/W " + decimal(picture.width));
    AddPageLine("/H " + decimal(picture.height));
    AddPageLine("/BPC 8");
    AddPageLine(gray ? "/CS /G" : "/CS /RGB");
    if (keepRaw) {
        // The ">" ends the data although no filter asks for it; readers skip it before "EI". Wanted.
        AddPageText("ID ");
        AddPageText(raw);
        AddPageLine(">");
    } else {
        AddPageLine("/F /RL");
        AddPageText("ID ");
        AddPageText(compressed);
        AddPageLine("\x80");
    }
    AddPageLine("EI");
    AddPageLine("Q");
}

void clsPDF::DrawShape(std::int32_t mode)
{
    SetPaintMode(mode);
    FlushPendingOperator();
}

void clsPDF::DrawText(std::int16_t x, std::int16_t y, std::string_view text, float angle)
{
    const std::int16_t flippedY = FlipY(y);
    const std::string escaped = EscapeText(utf8ToCp1252(text));
    FlushPendingOperator();
    std::string position;
    if (angle == 0) {
        position = decimal(x) + ' ' + decimal(flippedY) + " Td";
    } else {
        const std::string cosine = FormatNumber(std::cos(static_cast<double>(angle)));
        const std::string sine = FormatNumber(std::sin(static_cast<double>(angle)));
        const std::string negativeSine = sine.starts_with('-') ? sine.substr(1) : '-' + sine;
        position = cosine + ' ' + sine + ' ' + negativeSine + ' ' + cosine + ' ' + decimal(x) + ' ' +
                   decimal(flippedY) + " Tm";
    }
    AddPageLine("BT");
    AddPageLine("/F1 " + decimal(m_fontSize) + " Tf");
    AddPageLine(position);
    // Shown with ' like the running text, so it lands one leading below y. Wanted.
    AddPageLine('(' + escaped + ")'");
    AddPageLine("ET");
}

void clsPDF::MoveTo(std::int16_t x, std::int16_t y)
{
    const std::int16_t flippedY = FlipY(y);
    if (x == m_currentX && flippedY == m_currentY)
        return;
    m_currentX = x;
    m_currentY = flippedY;
    FlushPendingOperator();
    AddPageLine(decimal(x) + ' ' + decimal(flippedY) + " m");
}

void clsPDF::NewPage(std::int16_t fontSize, std::int16_t linesPerPage)
{
    if (fontSize != 0)
        m_fontSize = fontSize;
    if (linesPerPage != 0)
        m_linesPerPage = linesPerPage;
    if (m_lineNumber != 0) {
        EndPage();
    } else if (!m_dropBlankPages) {
        StartPage();
        EndPage();
    }
}

void clsPDF::PrintLine(std::string_view text)
{
    PrintLineBytes(utf8ToCp1252(text));
}

void clsPDF::PrintText(std::string_view text)
{
    PrintTextBytes(utf8ToCp1252(text));
}

void clsPDF::PrintFile(const std::filesystem::path& fileName)
{
    PrintTextBytes(ReadWholeFile(fileName));
}

void clsPDF::PrintLineBytes(std::string_view bytes)
{
    if (m_lineNumber == m_linesPerPage)
        EndPage();
    if (m_lineNumber == 0)
        StartPage();
    const std::string escaped = EscapeText(bytes);
    AddText("(");
    AddText(escaped);
    AddLine(")'");
    m_finished = false;
    m_lineNumber = checked16(std::int64_t{m_lineNumber} + 1);
}

void clsPDF::PrintTextBytes(std::string_view bytes)
{
    const std::string newPageBytes = utf8ToCp1252(m_newPageString);
    const std::string_view separator = DetectLineBreak(bytes);
    std::size_t start = 0;
    while (true) {
        const std::size_t end = bytes.find(separator, start);
        const std::string_view piece = bytes.substr(start, end == std::string_view::npos ? end : end - start);
        if (piece == newPageBytes)
            NewPage(0, 0);
        else
            PrintLineBytes(piece);
        if (end == std::string_view::npos)
            break;
        start = end + separator.size();
    }
}

std::string clsPDF::Value()
{
    if (!m_finished) {
        // The trailer goes behind the current end and the counters are put back, so printing can go on and
        // overwrite it.
        const std::int16_t lineNumber = m_lineNumber;
        const std::int32_t documentLength = m_documentLength;
        const std::int32_t objectCount = m_objectCount;
        const std::int32_t pageCount = m_pageCount;
        if (m_lineNumber != 0)
            EndPage();
        WriteTrailer();
        m_finalLength = m_documentLength;
        m_lineNumber = lineNumber;
        m_documentLength = documentLength;
        m_objectCount = objectCount;
        m_pageCount = pageCount;
    }
    return m_document.substr(0, static_cast<std::size_t>(m_finalLength));
}

void clsPDF::SavePDF(const std::filesystem::path& fileName)
{
    WriteWholeFile(fileName, Value());
}

void clsPDF::WriteHeader()
{
    m_finished = false;
    AddLine("%PDF-1.1");
    AddLine("%\xE2\xE3\xCF\xD3");

    const LocalDateTime now = m_clock();
    char timestamp[96];
    std::snprintf(timestamp, sizeof timestamp, "%04d%02d%02d%02d%02d%02d", now.year, now.month, now.day,
                  now.hour, now.minute, now.second);
    OpenObject();
    AddLine(std::string("/CreationDate (D:") + timestamp + ')');
    AddLine("/Producer (Zettelwerk [" + m_producerHost + "])");
    CloseObject();

    OpenObject();
    AddLine("/Type /Catalog");
    AddLine("/Pages 3 0 R");
    CloseObject();

    // The page tree needs the page count and is written by WriteTrailer.
    ReserveObject();

    OpenObject();
    AddLine("/Type /Font");
    AddLine("/Subtype /Type1");
    AddLine("/Name /F1");
    AddLine("/BaseFont /Courier");
    AddLine("/Encoding /WinAnsiEncoding");
    CloseObject();

    OpenObject();
    AddLine("/Font << /F1 4 0 R >>");
    AddLine("/ProcSet [ /PDF /Text ]");
    CloseObject();
}

void clsPDF::WriteTrailer()
{
    OpenReservedObject(kPageTreeObject);
    AddLine("<<");
    AddLine("/Type /Pages");
    AddLine("/Count " + decimal(m_pageCount));
    const bool landscape = m_orientation != 0;
    AddLine("/MediaBox [0 0 " + decimal(landscape ? m_paperHeight : m_paperWidth) + ' ' +
            decimal(landscape ? m_paperWidth : m_paperHeight) + ']');
    AddText("/Kids [ ");
    for (std::int32_t page = 1; page <= m_pageCount; ++page)
        AddText(decimal(m_pageObjects[static_cast<std::size_t>(page)]) + " 0 R ");
    AddLine("]");
    CloseObject();

    const std::int32_t crossReference = m_documentLength;
    AddLine("xref");
    AddLine("0 " + decimal(std::int64_t{m_objectCount} + 1));
    // Entries of 19 bytes: the single CR replaces the format's two-byte line end. Wanted.
    AddLine("0000000000 65535 f");
    for (std::int32_t object = 1; object <= m_objectCount; ++object) {
        const auto index = static_cast<std::size_t>(object);
        char entry[32];
        std::snprintf(entry, sizeof entry, "%010d 00000 n",
                      index < m_objectOffsets.size() ? m_objectOffsets[index] : 0);
        AddLine(entry);
    }
    AddLine("trailer");
    AddLine("<<");
    AddLine("/Size " + decimal(std::int64_t{m_objectCount} + 1));
    AddLine("/Root 2 0 R");
    AddLine("/Info 1 0 R");
    AddLine(">>");
    AddLine("startxref");
    AddLine(decimal(crossReference));
    AddLine("%%EOF");
    m_finished = true;
}

void clsPDF::StartPage()
{
    m_pageCount = checked32(std::int64_t{m_pageCount} + 1);
    growTable(m_pageObjects, m_pageCount);

    OpenObject();
    const std::int32_t page = m_objectCount;
    AddLine("/Type /Page");
    AddLine("/Parent 3 0 R");
    AddLine("/Resources 5 0 R");
    AddLine("/Contents " + decimal(std::int64_t{page} + 1) + " 0 R");
    CloseObject();
    m_pageObjects[static_cast<std::size_t>(m_pageCount)] = page;

    OpenObject();
    // The stream's length is only known at the page's end; it goes into the object after the stream.
    AddLine("/Length " + decimal(std::int64_t{page} + 2) + " 0 R");
    AddLine(">>");
    AddLine("stream");
    m_streamStart = m_documentLength;

    // A zero value leaves its flag as it stands.
    if (m_drawWidth != 0)
        m_widthDirty = true;
    if (m_drawColor != 0)
        m_strokeDirty = true;
    if (m_fillColor != 0)
        m_fillDirty = true;
    SetPendingOperator({});
    // The raw paper height, not Height: in landscape this is not the page's top. Wanted.
    m_currentX = 0;
    m_currentY = m_paperHeight;

    if (PageStarted)
        PageStarted();
    FlushPendingOperator();
    AddText(std::string_view(m_page).substr(0, static_cast<std::size_t>(m_pageLength)));
    m_pageLength = 0;

    if (m_fillColor != 0)
        AddLine("0 g");
    AddLine("BT");
    AddLine("/F1 " + decimal(m_fontSize) + " Tf");
    AddLine(decimal(m_leftMargin) + ' ' + decimal(sub16(Height(), m_topMargin)) + " Td");
    AddLine(decimal(m_fontSize) + " TL");
}

void clsPDF::EndPage()
{
    AddLine("ET");
    if (PageFinished)
        PageFinished();
    // Drawing made while the page was open lands here, behind the page's text.
    FlushPendingOperator();
    AddText(std::string_view(m_page).substr(0, static_cast<std::size_t>(m_pageLength)));
    m_pageLength = 0;
    const std::int32_t streamLength = checked32(std::int64_t{m_documentLength} - m_streamStart);
    AddLine("endstream");
    AddLine("endobj");
    NewObject();
    AddLine(decimal(streamLength));
    AddLine("endobj");
    m_lineNumber = 0;
    m_finished = false;
}

void clsPDF::NewObject()
{
    m_objectCount = checked32(std::int64_t{m_objectCount} + 1);
    RecordOffset(m_objectCount);
    AddLine(decimal(m_objectCount) + " 0 obj");
}

void clsPDF::OpenObject()
{
    NewObject();
    AddLine("<<");
}

void clsPDF::CloseObject()
{
    AddLine(">>");
    AddLine("endobj");
}

void clsPDF::ReserveObject()
{
    m_objectCount = checked32(std::int64_t{m_objectCount} + 1);
    growTable(m_objectOffsets, m_objectCount);
}

void clsPDF::OpenReservedObject(std::int32_t number)
{
    RecordOffset(number);
    AddLine(decimal(number) + " 0 obj");
}

void clsPDF::RecordOffset(std::int32_t number)
{
    growTable(m_objectOffsets, number);
    m_objectOffsets[static_cast<std::size_t>(number)] = m_documentLength;
}

void clsPDF::AddLine(std::string_view text)
{
    AddText(text);
    AddText(kLineEnd);
}

void clsPDF::AddText(std::string_view text)
{
    // Any write makes an earlier Value stale. PrintLine and EndPage say so anyway; this also covers a fault
    // that stops StartPage half-way, after which Value would otherwise hand out overwritten bytes.
    m_finished = false;
    appendBytes(m_document, m_documentLength, text);
}

void clsPDF::AddPageLine(std::string_view text)
{
    // A flag is cleared only once its line is written, so a colour or width that cannot be formatted fails
    // again at the next line instead of being lost.
    if (m_strokeDirty) {
        AddPageText(FormatColor(m_drawColor));
        AddPageText(kLineEnd);
        m_strokeDirty = false;
    }
    if (m_fillDirty) {
        AddPageText(toLower(FormatColor(m_fillColor)));
        AddPageText(kLineEnd);
        m_fillDirty = false;
    }
    if (m_widthDirty) {
        AddPageText(FormatNumber(m_drawWidth) + " w");
        AddPageText(kLineEnd);
        m_widthDirty = false;
    }
    AddPageText(text);
    AddPageText(kLineEnd);
}

void clsPDF::AddPageText(std::string_view text)
{
    appendBytes(m_page, m_pageLength, text);
}

std::string clsPDF::EscapeText(std::string_view text)
{
    // One pass gives what replacing "\" first, then "(", then ")" gives.
    std::string escaped;
    escaped.reserve(text.size() + 8);
    for (const char c : text) {
        if (c == '\\' || c == '(' || c == ')')
            escaped += '\\';
        escaped += c;
    }
    return escaped;
}

std::string clsPDF::FormatColor(std::int32_t color)
{
    const auto bits = static_cast<std::uint32_t>(color);
    const std::uint32_t red = bits & 0xFF;
    const std::uint32_t green = (bits >> 8) & 0xFF;
    const std::uint32_t blue = (bits >> 16) & 0xFF;
    if (red == green && green == blue)
        return FormatNumber(red / 255.0) + " G";
    return FormatNumber(red / 255.0) + ' ' + FormatNumber(green / 255.0) + ' ' + FormatNumber(blue / 255.0) +
           " RG";
}

std::string clsPDF::FormatNumber(double value)
{
    const double rounded = std::floor(value * 1000 + 0.5) / 1000;
    if (!std::isfinite(rounded))
        throw RunError::overflow();
    // The shortest digits that read back as the same double, never in exponent form; to_chars ignores the
    // locale, so the decimal mark is a point whatever the user's settings are.
    char buffer[512];
    const auto result =
        std::to_chars(std::begin(buffer), std::end(buffer), rounded, std::chars_format::fixed);
    std::string text(std::begin(buffer), result.ptr);
    if (text == "-0")
        text = "0";
    return text;
}

void clsPDF::SetPaintMode(std::int32_t mode)
{
    const std::string_view op = paintOperator(mode);
    if (!op.empty())
        SetPendingOperator(op);
}

void clsPDF::SetPendingOperator(std::string_view op)
{
    if (op == m_pendingOperator)
        return;
    FlushPendingOperator();
    m_pendingOperator = op;
}

void clsPDF::FlushPendingOperator()
{
    if (m_pendingOperator.empty())
        return;
    // Written without the dirty state lines, which belong to the next drawing operator.
    AddPageText(m_pendingOperator);
    AddPageText(kLineEnd);
    m_pendingOperator.clear();
}

std::string clsPDF::ReadWholeFile(const std::filesystem::path& fileName)
{
    // Whatever cannot be read, a missing file or a folder, is empty text.
    try {
        return readFileBytes(fileName);
    } catch (const RunError&) {
        return {};
    }
}

void clsPDF::WriteWholeFile(const std::filesystem::path& fileName, std::string_view bytes)
{
    // Through a temporary file and a rename, so that a failure never leaves a shortened file.
    writeFileAtomically(fileName, bytes);
}

std::string_view clsPDF::DetectLineBreak(std::string_view text)
{
    for (const std::string_view candidate : {"\r\n", "\n\r", "\r\r", "\n", "\r"}) {
        if (text.find(candidate) != std::string_view::npos)
            return candidate;
    }
    return "\r\n";
}

std::int32_t clsPDF::CountRun(std::string_view bytes, std::size_t from, unsigned char value)
{
    std::int32_t count = 0;
    while (count < 127 && from + static_cast<std::size_t>(count) < bytes.size() &&
           static_cast<unsigned char>(bytes[from + static_cast<std::size_t>(count)]) == value)
        ++count;
    return count;
}

std::string clsPDF::CompressRunLength(std::string_view bytes)
{
    // More than the worst case needs: one length byte per 128 literal bytes.
    std::string out(bytes.size() * 128 / 127 + 2, '\0');
    auto* output = reinterpret_cast<unsigned char*>(out.data());
    std::size_t written = 0;
    std::size_t literalLength = 0; // position of the open literal run's length byte
    // Below 128: a literal run of h + 1 bytes is open. 128 or more: none is.
    std::int32_t h = 128;
    std::size_t i = 0;
    while (i < bytes.size()) {
        const auto c = static_cast<unsigned char>(bytes[i]);
        const std::int32_t r = CountRun(bytes, i + 1, c) + 1;
        if (r == 2 && h < 126) {
            h += 2;
            output[written] = c;
            output[written + 1] = c;
            written += 2;
            i += 2;
        } else if (r == 1) {
            if (h >= 127) {
                if (h == 127)
                    output[literalLength] = 127;
                literalLength = written;
                h = 0;
                output[written + 1] = c;
                written += 2;
                i += 1;
            } else {
                h += 1;
                output[written] = c;
                written += 1;
                i += 1;
            }
        } else {
            if (h < 128)
                output[literalLength] = static_cast<unsigned char>(h);
            h = 257 - r;
            output[written] = static_cast<unsigned char>(h);
            output[written + 1] = c;
            written += 2;
            i += static_cast<std::size_t>(r);
        }
    }
    if (h < 128)
        output[literalLength] = static_cast<unsigned char>(h);
    out.resize(written);
    return out;
}

std::int16_t clsPDF::FlipY(std::int16_t y) const
{
    return sub16(Height(), y);
}

} // namespace zw
