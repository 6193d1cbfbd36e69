#pragma once

#include <optional>
#include <string>
#include <vector>

namespace zw::rtf {

struct Colour
{
    int red = 0;
    int green = 0;
    int blue = 0;
    bool operator==(const Colour&) const = default;
};

// The character formatting a run carries. Font and colour are indices into the document's tables; colour 0 is
// the automatic colour.
struct CharFormat
{
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool strikethrough = false;
    int halfPoints = 24;
    int font = 0;
    int colour = 0;
    bool operator==(const CharFormat&) const = default;
};

// A picture inside the text, kept as the PNG file it was read or encoded as.
struct Picture
{
    std::string png;
    int widthPixels = 0;
    int heightPixels = 0;
    int goalWidthTwips = 0; // the size on the page; 0 when the source named none
    int goalHeightTwips = 0;
    bool operator==(const Picture&) const = default;
};

// A stretch of text in one format, or a picture: a picture run has no text.
struct Run
{
    std::string text; // UTF-8; a tab is '\t', a line break inside the paragraph '\n'
    CharFormat format;
    std::optional<Picture> picture;
    bool operator==(const Run&) const = default;
};

enum class Alignment { Left, Centre, Right, Justified };

struct Paragraph
{
    std::vector<Run> runs;
    Alignment alignment = Alignment::Left;
    bool operator==(const Paragraph&) const = default;

    std::string text() const;
};

struct Font
{
    std::string name;
    std::string family = "fnil"; // fswiss, froman, fmodern, ...
    int charset = 0;
    bool operator==(const Font&) const = default;
};

// A rich-text document as the program's rich-text boxes hold it: font and colour tables and paragraphs of
// formatted runs. Reader and writer in this folder turn it into RTF source and back.
// The paper and its margins in twips, for documents that say where they are printed.
struct PageLayout
{
    int paperWidth = 11906;  // A4
    int paperHeight = 16838;
    int marginLeft = 1134;   // 2 cm
    int marginRight = 1134;
    int marginTop = 1134;
    int marginBottom = 1134;
    bool operator==(const PageLayout&) const = default;
};

struct Document
{
    std::vector<Font> fonts;
    std::vector<Colour> colours; // index 0 is the automatic colour and is not listed here
    std::vector<Paragraph> paragraphs;
    int codePage = 1252;
    int defaultLanguage = 1031;
    std::optional<PageLayout> page; // nothing: the reader's defaults
    bool operator==(const Document&) const = default;

    // The plain text: paragraphs joined by '\n'; pictures leave no trace.
    std::string plainText() const;
    // Appends a run to the last paragraph, merging it with the run before if the format is the same.
    void append(std::string text, const CharFormat& format);
    void appendPicture(Picture picture, const CharFormat& format);
    void newParagraph(Alignment alignment = Alignment::Left);
};

} // namespace zw::rtf
