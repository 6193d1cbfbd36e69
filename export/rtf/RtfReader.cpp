#include "export/rtf/RtfReader.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/CodePage.h"

namespace zw::rtf {
namespace {

enum class Destination { Text, FontTable, ColourTable, Picture, Skip };

struct State
{
    CharFormat format;
    Alignment alignment = Alignment::Left;
    Destination destination = Destination::Text;
    int unicodeSkip = 1;
};

bool isSkippedDestination(std::string_view word)
{
    static constexpr std::string_view kSkipped[] = {"info",   "stylesheet", "nonshppict", "header",  "footer",
                                                    "object", "field",      "fldinst",  "xmlnstbl", "listtable",
                                                    "listoverridetable", "rsidtbl", "generator", "themedata"};
    for (auto skipped : kSkipped) {
        if (word == skipped)
            return true;
    }
    return false;
}

class Reader
{
public:
    explicit Reader(std::string_view source) : m_source(source) {}

    Document read()
    {
        m_stack.push_back({});
        while (m_at < m_source.size()) {
            char c = m_source[m_at];
            if (c == '{') {
                ++m_at;
                flushText();
                m_stack.push_back(m_stack.back());
                m_groupStart = true;
                m_starred.reset();
                continue;
            }
            if (c == '}') {
                ++m_at;
                flushText();
                closeGroup();
                m_groupStart = false;
                continue;
            }
            if (c == '\\') {
                controlSymbolOrWord();
                m_groupStart = false;
                continue;
            }
            m_groupStart = false;
            ++m_at;
            if (c == '\r' || c == '\n')
                continue;
            if (m_pendingSkip > 0) {
                --m_pendingSkip;
                continue;
            }
            m_pending += c;
        }
        flushText();
        if (m_picture)
            finishPicture(); // a source cut off inside the picture still shows what arrived
        if (!m_document.paragraphs.empty() && m_document.paragraphs.back().runs.empty() && m_openParagraph)
            m_document.paragraphs.pop_back();
        return std::move(m_document);
    }

private:
    State& state() { return m_stack.back(); }

    void closeGroup()
    {
        if (state().destination == Destination::FontTable && m_font)
            finishFont();
        if (m_picture && m_stack.size() == m_pictureDepth)
            finishPicture();
        if (m_stack.size() > 1)
            m_stack.pop_back();
    }

    void flushText()
    {
        if (m_pending.empty())
            return;
        std::string text = std::move(m_pending);
        m_pending.clear();
        switch (state().destination) {
        case Destination::Text:
            ensureParagraph();
            m_document.append(std::move(text), state().format);
            break;
        case Destination::FontTable:
            fontText(text);
            break;
        case Destination::ColourTable:
            for (char c : text) {
                if (c == ';') {
                    if (m_colourStarted)
                        m_document.colours.push_back(m_colour);
                    m_colourStarted = true; // the first ';' closes the automatic colour, which is not listed
                    m_colour = {};
                }
            }
            break;
        case Destination::Picture:
            pictureHex(text);
            break;
        case Destination::Skip:
            break;
        }
    }

    void pictureHex(const std::string& text)
    {
        for (char c : text) {
            int nibble = c >= '0' && c <= '9' ? c - '0' : c >= 'a' && c <= 'f' ? c - 'a' + 10
                       : c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
            if (nibble < 0)
                continue; // line ends and blanks between the digits
            if (m_highNibble < 0) {
                m_highNibble = nibble;
            } else {
                m_picture->data += static_cast<char>((m_highNibble << 4) | nibble);
                m_highNibble = -1;
            }
        }
    }

    // Only PNG pictures are kept; other kinds (metafiles, device bitmaps, JPEG) are passed over.
    void finishPicture()
    {
        PictureState picture = std::move(*m_picture);
        m_picture.reset();
        m_highNibble = -1;
        if (!picture.png || picture.data.empty())
            return;
        Picture result;
        result.png = std::move(picture.data);
        result.widthPixels = std::max(0, picture.width);
        result.heightPixels = std::max(0, picture.height);
        result.goalWidthTwips = std::max(0, picture.goalWidth);
        result.goalHeightTwips = std::max(0, picture.goalHeight);
        ensureParagraph();
        m_document.appendPicture(std::move(result), m_stack[m_pictureDepth - 2].format);
    }

    void ensureParagraph()
    {
        if (!m_openParagraph) {
            m_document.newParagraph(state().alignment);
            m_openParagraph = true;
        }
    }

    void fontText(const std::string& text)
    {
        for (char c : text) {
            if (c == ';') {
                finishFont();
            } else {
                if (!m_font)
                    m_font = Font{};
                m_font->name += c;
            }
        }
    }

    void finishFont()
    {
        if (!m_font)
            return;
        auto first = m_font->name.find_first_not_of(' ');
        m_font->name = first == std::string::npos ? "" : m_font->name.substr(first);
        std::size_t index = m_fontIndex < 0 ? m_document.fonts.size() : static_cast<std::size_t>(m_fontIndex);
        // Font numbers are 16-bit in every writer; a larger one would only make the table huge.
        if (index > 32767) {
            m_font.reset();
            m_fontIndex = -1;
            return;
        }
        if (m_document.fonts.size() <= index)
            m_document.fonts.resize(index + 1);
        m_document.fonts[index] = *m_font;
        m_font.reset();
        m_fontIndex = -1;
    }

    void emitCodePoint(unsigned codePoint)
    {
        appendUtf8(m_pending, codePoint);
    }

    void controlSymbolOrWord()
    {
        ++m_at; // the backslash
        if (m_at >= m_source.size())
            return;
        char c = m_source[m_at];
        if (!std::isalpha(static_cast<unsigned char>(c))) {
            ++m_at;
            controlSymbol(c);
            return;
        }
        std::size_t start = m_at;
        while (m_at < m_source.size() && std::isalpha(static_cast<unsigned char>(m_source[m_at])))
            ++m_at;
        std::string_view word = m_source.substr(start, m_at - start);
        std::optional<int> parameter;
        std::size_t numberStart = m_at;
        if (m_at < m_source.size() && m_source[m_at] == '-')
            ++m_at;
        while (m_at < m_source.size() && std::isdigit(static_cast<unsigned char>(m_source[m_at])))
            ++m_at;
        if (m_at > numberStart && !(m_at == numberStart + 1 && m_source[numberStart] == '-')) {
            // Saturates rather than overflows: a hostile source may give any number of digits.
            const bool negative = m_source[numberStart] == '-';
            long long value = 0;
            for (std::size_t i = numberStart + (negative ? 1 : 0); i < m_at; ++i)
                value = std::min(value * 10 + (m_source[i] - '0'), 2147483647LL);
            parameter = static_cast<int>(negative ? -value : value);
        } else {
            m_at = numberStart;
        }
        if (m_at < m_source.size() && m_source[m_at] == ' ')
            ++m_at; // the delimiting blank belongs to the word
        if (word == "bin") {
            binary(parameter.value_or(0));
            return;
        }
        controlWord(word, parameter);
        m_starred.reset();
    }

    void controlSymbol(char c)
    {
        switch (c) {
        case '\\':
        case '{':
        case '}':
            takeCharacter(std::string(1, c));
            break;
        case '~':
            takeCharacter("\xC2\xA0");
            break;
        case '-':
            break; // optional hyphen
        case '_':
            takeCharacter("-");
            break;
        case '*':
            if (m_groupStart) {
                m_starred = state().destination;
                state().destination = Destination::Skip;
            }
            break;
        case '\'': {
            if (m_at + 2 > m_source.size()) {
                m_at = m_source.size(); // a source cut off inside the escape
            } else {
                auto hex = std::string(m_source.substr(m_at, 2));
                m_at += 2;
                if (std::isxdigit(static_cast<unsigned char>(hex[0])) &&
                    std::isxdigit(static_cast<unsigned char>(hex[1]))) {
                    char byte = static_cast<char>(std::stoi(hex, nullptr, 16));
                    takeCharacter(cp1252ToUtf8(std::string_view(&byte, 1)));
                }
            }
            break;
        }
        case '\r':
        case '\n':
            paragraphEnd();
            break;
        default:
            break;
        }
    }

    // \binN: N raw bytes follow. They are picture data inside a picture and nothing anywhere else.
    void binary(int length)
    {
        flushText();
        const std::size_t count = std::min<std::size_t>(static_cast<std::size_t>(std::max(0, length)),
                                                        m_source.size() - m_at);
        if (state().destination == Destination::Picture)
            m_picture->data.append(m_source.substr(m_at, count));
        m_at += count;
    }

    // One character of text, as far as the skip after a \u allows.
    void takeCharacter(const std::string& text)
    {
        if (m_pendingSkip > 0) {
            --m_pendingSkip;
            return;
        }
        m_pending += text;
    }

    void paragraphEnd()
    {
        if (state().destination != Destination::Text)
            return;
        flushText();
        ensureParagraph();
        m_openParagraph = false;
    }

    void controlWord(std::string_view word, std::optional<int> parameter)
    {
        flushText();
        m_pendingSkip = 0;
        const int value = parameter.value_or(1);
        State& s = state();
        if (m_starred && word == "shppict") {
            s.destination = *m_starred; // the picture in its modern form, which this reader knows
            return;
        }
        if (m_groupStart && word == "pict") {
            if (s.destination == Destination::Text && !m_picture) {
                flushText();
                s.destination = Destination::Picture;
                m_picture = PictureState{};
                m_pictureDepth = m_stack.size();
            } else {
                s.destination = Destination::Skip;
            }
            return;
        }
        if (m_groupStart && isSkippedDestination(word)) {
            s.destination = Destination::Skip;
            return;
        }
        if (word == "fonttbl") {
            s.destination = Destination::FontTable;
            return;
        }
        if (word == "colortbl") {
            s.destination = Destination::ColourTable;
            return;
        }
        if (s.destination == Destination::FontTable) {
            if (word == "f") {
                finishFont();
                m_font = Font{};
                m_fontIndex = value;
            } else if (word == "fcharset" && m_font) {
                m_font->charset = value;
            } else if (m_font && word.size() > 1 && word[0] == 'f' && !parameter) {
                m_font->family = std::string(word);
            }
            return;
        }
        if (s.destination == Destination::ColourTable) {
            m_colourStarted = true;
            if (word == "red")
                m_colour.red = value;
            else if (word == "green")
                m_colour.green = value;
            else if (word == "blue")
                m_colour.blue = value;
            return;
        }
        if (s.destination == Destination::Picture) {
            if (word == "pngblip")
                m_picture->png = true;
            else if (word == "picw")
                m_picture->width = value;
            else if (word == "pich")
                m_picture->height = value;
            else if (word == "picwgoal")
                m_picture->goalWidth = value;
            else if (word == "pichgoal")
                m_picture->goalHeight = value;
            return;
        }
        if (word == "ansicpg") {
            m_document.codePage = value;
            return;
        }
        if (word == "deflang") {
            m_document.defaultLanguage = value;
            return;
        }
        static const std::pair<std::string_view, int PageLayout::*> kPageWords[] = {
            {"paperw", &PageLayout::paperWidth}, {"paperh", &PageLayout::paperHeight},
            {"margl", &PageLayout::marginLeft},  {"margr", &PageLayout::marginRight},
            {"margt", &PageLayout::marginTop},   {"margb", &PageLayout::marginBottom}};
        for (const auto& [name, member] : kPageWords) {
            if (word == name) {
                if (!m_document.page)
                    m_document.page.emplace();
                (*m_document.page).*member = value;
                return;
            }
        }
        if (s.destination == Destination::Skip)
            return;
        if (word == "par") {
            paragraphEnd();
        } else if (word == "line") {
            takeCharacter("\n");
        } else if (word == "tab") {
            takeCharacter("\t");
        } else if (word == "b") {
            s.format.bold = value != 0;
        } else if (word == "i") {
            s.format.italic = value != 0;
        } else if (word == "ul") {
            s.format.underline = value != 0;
        } else if (word == "ulnone") {
            s.format.underline = false;
        } else if (word == "strike") {
            s.format.strikethrough = value != 0;
        } else if (word == "fs") {
            s.format.halfPoints = value;
        } else if (word == "f") {
            s.format.font = value;
        } else if (word == "cf") {
            s.format.colour = value;
        } else if (word == "plain") {
            s.format = {};
        } else if (word == "pard") {
            s.alignment = Alignment::Left;
            alignOpenParagraph();
        } else if (word == "ql" || word == "qc" || word == "qr" || word == "qj") {
            s.alignment = word == "qc" ? Alignment::Centre : word == "qr" ? Alignment::Right
                        : word == "qj" ? Alignment::Justified : Alignment::Left;
            alignOpenParagraph();
        } else if (word == "uc") {
            s.unicodeSkip = value;
        } else if (word == "u") {
            int codePoint = value < 0 ? value + 65536 : value;
            appendUtf8(m_pending, static_cast<unsigned>(codePoint));
            m_pendingSkip = s.unicodeSkip;
        } else if (word == "emdash") {
            takeCharacter("\xE2\x80\x94");
        } else if (word == "endash") {
            takeCharacter("\xE2\x80\x93");
        } else if (word == "bullet") {
            takeCharacter("\xE2\x80\xA2");
        } else if (word == "lquote" || word == "rquote") {
            takeCharacter(word == "lquote" ? "\xE2\x80\x98" : "\xE2\x80\x99");
        } else if (word == "ldblquote" || word == "rdblquote") {
            takeCharacter(word == "ldblquote" ? "\xE2\x80\x9C" : "\xE2\x80\x9D");
        }
    }

    // An alignment word before the paragraph's first text still belongs to that paragraph.
    void alignOpenParagraph()
    {
        if (m_openParagraph && !m_document.paragraphs.empty() && m_document.paragraphs.back().runs.empty())
            m_document.paragraphs.back().alignment = state().alignment;
    }

    std::string_view m_source;
    std::size_t m_at = 0;
    std::vector<State> m_stack;
    Document m_document;
    std::string m_pending;
    int m_pendingSkip = 0;
    bool m_groupStart = false;
    bool m_openParagraph = false;
    std::optional<Font> m_font;
    struct PictureState
    {
        bool png = false;
        int width = 0;
        int height = 0;
        int goalWidth = 0;
        int goalHeight = 0;
        std::string data;
    };
    std::optional<PictureState> m_picture;
    std::size_t m_pictureDepth = 0; // the size of the group stack inside the picture's group
    int m_highNibble = -1;
    std::optional<Destination> m_starred; // the destination before a "\*" at a group's start
    int m_fontIndex = -1;
    Colour m_colour;
    bool m_colourStarted = false;
};

} // namespace

Document readRtf(std::string_view source)
{
    Document document = Reader(source).read();
    return document;
}

} // namespace zw::rtf
