#include "export/rtf/RtfWriter.h"

#include <algorithm>
#include <cstdio>
#include <sstream>

#include "core/CodePage.h"

namespace zw::rtf {
namespace {

// The code point of the UTF-8 sequence at `at`, advancing past it; a broken sequence gives '?'.
unsigned nextCodePoint(const std::string& text, std::size_t& at)
{
    auto byte = static_cast<unsigned char>(text[at++]);
    if (byte < 0x80)
        return byte;
    int extra = byte >= 0xF0 ? 3 : byte >= 0xE0 ? 2 : byte >= 0xC0 ? 1 : -1;
    if (extra < 0)
        return '?';
    unsigned codePoint = byte & (0x3Fu >> extra);
    for (int i = 0; i < extra; ++i) {
        if (at >= text.size() || (static_cast<unsigned char>(text[at]) & 0xC0) != 0x80)
            return '?';
        codePoint = (codePoint << 6) | (static_cast<unsigned char>(text[at++]) & 0x3F);
    }
    return codePoint;
}

void writeText(std::ostream& out, const std::string& text)
{
    std::size_t at = 0;
    while (at < text.size()) {
        unsigned codePoint = nextCodePoint(text, at);
        switch (codePoint) {
        case '\\':
        case '{':
        case '}':
            out << '\\' << static_cast<char>(codePoint);
            continue;
        case '\t':
            out << "\\tab ";
            continue;
        case '\n':
            out << "\\line ";
            continue;
        case '\r':
            continue;
        case 0xA0:
            out << "\\~";
            continue;
        default:
            break;
        }
        if (codePoint < 0x80) {
            out << static_cast<char>(codePoint);
            continue;
        }
        std::string byte = utf8ToCp1252(utf8Of(codePoint));
        if (byte.size() == 1 && byte[0] != '?') {
            char hex[8];
            std::snprintf(hex, sizeof hex, "\\'%02x", static_cast<unsigned char>(byte[0]));
            out << hex;
        } else if (codePoint < 0x10000) {
            // \u takes a signed 16-bit number; the '?' stands for readers without Unicode.
            out << "\\u" << static_cast<int>(static_cast<short>(codePoint)) << '?';
        } else {
            out << '?';
        }
    }
}

void writeFormatChange(std::ostream& out, const CharFormat& from, const CharFormat& to)
{
    bool any = false;
    auto word = [&](const char* name, int value, bool withValue) {
        out << '\\' << name;
        if (withValue)
            out << value;
        any = true;
    };
    if (to.font != from.font)
        word("f", to.font, true);
    if (to.halfPoints != from.halfPoints)
        word("fs", to.halfPoints, true);
    if (to.colour != from.colour)
        word("cf", to.colour, true);
    if (to.bold != from.bold)
        word(to.bold ? "b" : "b0", 0, false);
    if (to.italic != from.italic)
        word(to.italic ? "i" : "i0", 0, false);
    if (to.underline != from.underline)
        word(to.underline ? "ul" : "ulnone", 0, false);
    if (to.strikethrough != from.strikethrough)
        word(to.strikethrough ? "strike" : "strike0", 0, false);
    if (any)
        out << ' ';
}

void writePicture(std::ostream& out, const Picture& picture)
{
    out << "{\\pict\\pngblip\\picw" << picture.widthPixels << "\\pich" << picture.heightPixels;
    if (picture.goalWidthTwips > 0 && picture.goalHeightTwips > 0)
        out << "\\picwgoal" << picture.goalWidthTwips << "\\pichgoal" << picture.goalHeightTwips;
    static constexpr char kHex[] = "0123456789abcdef";
    static constexpr std::size_t kBytesPerLine = 64;
    std::string line;
    for (std::size_t at = 0; at < picture.png.size(); at += kBytesPerLine) {
        line.assign("\r\n");
        const std::size_t end = std::min(picture.png.size(), at + kBytesPerLine);
        for (std::size_t i = at; i < end; ++i) {
            const auto byte = static_cast<unsigned char>(picture.png[i]);
            line += kHex[byte >> 4];
            line += kHex[byte & 0xF];
        }
        out << line;
    }
    out << "\r\n}";
}

const char* alignmentWord(Alignment alignment)
{
    switch (alignment) {
    case Alignment::Centre:
        return "\\qc";
    case Alignment::Right:
        return "\\qr";
    case Alignment::Justified:
        return "\\qj";
    case Alignment::Left:
        break;
    }
    return "";
}

} // namespace

void writeRtf(const Document& document, std::ostream& out)
{
    out << "{\\rtf1\\ansi\\ansicpg" << document.codePage << "\\deff0\\deflang" << document.defaultLanguage;
    out << "{\\fonttbl";
    if (document.fonts.empty()) {
        out << "{\\f0\\fnil\\fcharset0 Arial;}";
    } else {
        for (std::size_t i = 0; i < document.fonts.size(); ++i) {
            const Font& font = document.fonts[i];
            out << "{\\f" << i << "\\" << (font.family.empty() ? "fnil" : font.family) << "\\fcharset" << font.charset
                << ' ';
            writeText(out, font.name);
            out << ";}";
        }
    }
    out << "}";
    if (!document.colours.empty()) {
        out << "{\\colortbl ;";
        for (const Colour& colour : document.colours)
            out << "\\red" << colour.red << "\\green" << colour.green << "\\blue" << colour.blue << ';';
        out << "}";
    }
    if (const auto& page = document.page) {
        out << "\r\n\\paperw" << page->paperWidth << "\\paperh" << page->paperHeight << "\\margl" << page->marginLeft
            << "\\margr" << page->marginRight << "\\margt" << page->marginTop << "\\margb" << page->marginBottom;
    }
    out << "\r\n\\viewkind4\\uc1";
    CharFormat current;
    bool first = true;
    for (const Paragraph& paragraph : document.paragraphs) {
        out << (first ? "\\pard" : "\\par\r\n\\pard") << alignmentWord(paragraph.alignment);
        if (first) {
            // The first paragraph states the whole format, so the body never depends on the reader's defaults.
            out << "\\f" << current.font << "\\fs" << current.halfPoints << ' ';
        } else {
            out << ' ';
        }
        first = false;
        for (const Run& run : paragraph.runs) {
            writeFormatChange(out, current, run.format);
            current = run.format;
            if (run.picture)
                writePicture(out, *run.picture);
            else
                writeText(out, run.text);
        }
    }
    if (first)
        out << "\\pard ";
    out << "\\par\r\n}\r\n";
}

std::string writeRtf(const Document& document)
{
    std::ostringstream out;
    writeRtf(document, out);
    return out.str();
}

} // namespace zw::rtf
