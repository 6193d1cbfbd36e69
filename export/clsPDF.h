#pragma once

#include "export/BitmapFile.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace zw {

// A moment of the local calendar, as the document information records it.
struct LocalDateTime
{
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
};
using LocalClock = std::function<LocalDateTime()>;
LocalDateTime currentLocalDateTime();

// The vendor's web host as built in, named in every document's /Producer entry unless the caller names
// another.
inline constexpr std::string_view kPdfProducerHost = "www.zettelwerk.example";

// A writer for PDF 1.1 documents that produces every byte itself: a line printer of Courier text that pages
// by itself, and a drawing surface of boxes, lines, curves, circles, rotated text and inline images.
// Coordinates are points from the top left of the page; the whole document grows in memory until Value or
// SavePDF hands it out. Text arguments are UTF-8 and reach the file in Windows-1252. Faults are RunError:
// 6 when a 16-bit coordinate or a 32-bit length overflows.
class clsPDF
{
public:
    // Values of FillMode and of the Mode arguments of the drawing operations.
    static constexpr std::int32_t ModeFill = -1;
    static constexpr std::int32_t ModeStroke = 0;
    static constexpr std::int32_t ModeCloseFillStroke = 1;
    static constexpr std::int32_t ModeCloseStroke = 2;

    explicit clsPDF(LocalClock clock = currentLocalDateTime,
                    std::string producerHost = std::string(kPdfProducerHost));

    // Colours are 0x00BBGGRR.
    std::int32_t DrawColor() const { return m_drawColor; }
    void setDrawColor(std::int32_t color);
    float DrawWidth() const { return m_drawWidth; }
    void setDrawWidth(float width);
    bool DropBlankPages() const { return m_dropBlankPages; }
    void setDropBlankPages(bool drop) { m_dropBlankPages = drop; }
    std::int32_t FillColor() const { return m_fillColor; }
    void setFillColor(std::int32_t color);
    std::int32_t FillMode() const { return m_fillMode; }
    void setFillMode(std::int32_t mode);
    std::int16_t FontSize() const { return m_fontSize; }
    void setFontSize(std::int16_t size) { m_fontSize = size; }
    std::int16_t Height() const { return m_orientation != 0 ? m_paperWidth : m_paperHeight; }
    void setHeight(std::int16_t height);
    std::int16_t LeftMargin() const { return m_leftMargin; }
    void setLeftMargin(std::int16_t margin) { m_leftMargin = margin; }
    std::int16_t LineNumber() const { return m_lineNumber; }
    std::int16_t LinesPerPage() const { return m_linesPerPage; }
    void setLinesPerPage(std::int16_t lines) { m_linesPerPage = lines; }
    const std::string& NewPageString() const { return m_newPageString; }
    void setNewPageString(std::string text) { m_newPageString = std::move(text); }
    std::int32_t PageNumber() const { return m_pageCount; }
    std::int32_t Orientation() const { return m_orientation; }
    void setOrientation(std::int32_t orientation) { m_orientation = orientation; }
    std::int32_t PaperSize() const { return m_paperSize; }
    void setPaperSize(std::int32_t size);
    std::int16_t TopMargin() const { return m_topMargin; }
    void setTopMargin(std::int16_t margin) { m_topMargin = margin; }
    std::int16_t Width() const { return m_orientation != 0 ? m_paperHeight : m_paperWidth; }
    void setWidth(std::int16_t width);

    void Clear(std::int16_t fontSize = 0, std::int16_t linesPerPage = 0);
    void DrawBox(std::int16_t x, std::int16_t y, std::int16_t width, std::int16_t height, std::int32_t mode);
    void DrawCircle(std::int16_t x, std::int16_t y, std::int16_t radius, std::int32_t mode);
    void DrawCurveTo(std::int16_t x1, std::int16_t y1, std::int16_t x2, std::int16_t y2, std::int16_t x3,
                     std::int16_t y3);
    void DrawLine(std::int16_t x1, std::int16_t y1, std::int16_t x2, std::int16_t y2);
    void DrawLineTo(std::int16_t x, std::int16_t y);
    // Width and Height are the size on the page; negative values mirror the picture.
    void DrawPicture(std::int16_t x, std::int16_t y, std::int16_t width, std::int16_t height,
                     const Bitmap& picture, bool gray);
    // Loads a Windows bitmap file first (RunError 53 missing, 75 unreadable, 481 no such bitmap).
    void DrawPicture(std::int16_t x, std::int16_t y, std::int16_t width, std::int16_t height,
                     const std::filesystem::path& pictureFile, bool gray);
    void DrawShape(std::int32_t mode);
    // Angle in radians, counter-clockwise.
    void DrawText(std::int16_t x, std::int16_t y, std::string_view text, float angle = 0);
    void MoveTo(std::int16_t x, std::int16_t y);
    void NewPage(std::int16_t fontSize = 0, std::int16_t linesPerPage = 0);
    void PrintLine(std::string_view text);
    void PrintText(std::string_view text);
    // The file's bytes are taken as Windows-1252; a missing or unreadable file prints one empty line.
    void PrintFile(const std::filesystem::path& fileName);
    // The finished document. Reading it does not end the document: printing may go on afterwards.
    std::string Value();
    // Throws RunError (76 missing folder, 75 not writable, 61 disk full); an old file stays whole then.
    void SavePDF(const std::filesystem::path& fileName);

    // Raised while a page is made; a handler may draw. PageStarted's drawing comes ahead of the page's text,
    // PageFinished's behind it.
    std::function<void()> PageStarted;
    std::function<void()> PageFinished;

private:
    friend struct clsPDFTestAccess;

    void WriteHeader();
    void WriteTrailer();
    void StartPage();
    void EndPage();
    void NewObject();
    void OpenObject();
    void CloseObject();
    void ReserveObject();
    void OpenReservedObject(std::int32_t number);
    void RecordOffset(std::int32_t number);
    void AddLine(std::string_view text);
    void AddText(std::string_view text);
    void AddPageLine(std::string_view text);
    void AddPageText(std::string_view text);
    static std::string EscapeText(std::string_view text);
    // "r g b RG", or "x G" for a gray; the fill colour is the same in lower case.
    static std::string FormatColor(std::int32_t color);
    static std::string FormatNumber(double value);
    void SetPaintMode(std::int32_t mode);
    void SetPendingOperator(std::string_view op);
    void FlushPendingOperator();
    static std::string ReadWholeFile(const std::filesystem::path& fileName);
    static void WriteWholeFile(const std::filesystem::path& fileName, std::string_view bytes);
    static std::string_view DetectLineBreak(std::string_view text);
    // The PDF run-length encoding of bytes, without the end-of-data byte 128.
    static std::string CompressRunLength(std::string_view bytes);
    static std::int32_t CountRun(std::string_view bytes, std::size_t from, unsigned char value);
    void PrintLineBytes(std::string_view bytes);
    void PrintTextBytes(std::string_view bytes);
    std::int16_t FlipY(std::int16_t y) const;

    LocalClock m_clock;
    std::string m_producerHost;

    std::int32_t m_drawColor = 0;
    float m_drawWidth = 0;
    bool m_dropBlankPages = false;
    std::int32_t m_fillColor = 0;
    std::int32_t m_fillMode = 0;
    std::int16_t m_fontSize = 0;
    std::int16_t m_paperHeight = 0;
    std::int16_t m_linesPerPage = 0;
    std::int16_t m_leftMargin = 0;
    std::int16_t m_topMargin = 0;
    std::string m_newPageString;
    std::int32_t m_orientation = 0;
    std::int32_t m_paperSize = 0;
    std::int16_t m_paperWidth = 0;
    std::vector<std::int32_t> m_pageObjects; // from index 1
    std::int32_t m_pageCount = 0;
    std::vector<std::int32_t> m_objectOffsets; // from index 1
    std::int32_t m_objectCount = 0;
    std::string m_document;
    std::int32_t m_documentLength = 0;
    std::string m_page;
    std::int32_t m_pageLength = 0;
    std::int32_t m_finalLength = 0;
    bool m_finished = false;
    std::int16_t m_lineNumber = 0;
    std::int32_t m_streamStart = 0;
    bool m_strokeDirty = false;
    bool m_widthDirty = false;
    bool m_fillDirty = false;
    std::int16_t m_currentX = 0;
    std::int16_t m_currentY = 0;
    std::string m_pendingOperator;
};

} // namespace zw
