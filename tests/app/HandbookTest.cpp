#include <gtest/gtest.h>
#include <regex>
#include <set>
#include <string>

#include "app/CommandCatalogue.h"
#include "app/TextFile.h"

namespace zw {
namespace {

// The handbook as a reader sees it: no tags, entities read, every run of white space one blank.
std::string handbookText(const std::string& html)
{
    std::string text = std::regex_replace(html, std::regex("<[^>]*>"), "");
    for (auto [entity, character] : {std::pair{"&gt;", ">"}, {"&lt;", "<"}, {"&quot;", "\""}, {"&amp;", "&"}}) {
        for (auto at = text.find(entity); at != std::string::npos; at = text.find(entity, at + 1))
            text.replace(at, std::string_view(entity).size(), character);
    }
    return std::regex_replace(text, std::regex("\\s+"), " ");
}

const std::string& handbookHtml()
{
    static const std::string html = readFileBytes(ZW_HANDBOOK);
    return html;
}

// A menu entry the handbook does not name is a command a user cannot look up.
TEST(Handbook, NamesEveryMenuEntryAsTheMenuShowsIt)
{
    const std::string text = handbookText(handbookHtml());
    for (const MenuEntry& entry : menuTree()) {
        std::string shown = parseCaption(entry.caption).text;
        // The last file's entry shows that file's path, never its design caption.
        if (shown == "-" || entry.name == "men_dat")
            continue;
        std::erase(shown, '&');
        SCOPED_TRACE(std::string(entry.name));
        EXPECT_NE(text.find(shown), std::string::npos) << "the handbook does not name " << shown;
    }
}

// The help window jumps by anchor; a link to a missing one leaves the reader at the top.
TEST(Handbook, EveryLinkReachesAnAnchorAndTheContentsListEveryChapter)
{
    const std::string& html = handbookHtml();
    std::set<std::string> anchors;
    const std::regex id("id=\"([^\"]+)\"");
    for (std::sregex_iterator it(html.begin(), html.end(), id), end; it != end; ++it)
        anchors.insert((*it)[1]);
    std::set<std::string> linked;
    const std::regex link("href=\"#([^\"]+)\"");
    for (std::sregex_iterator it(html.begin(), html.end(), link), end; it != end; ++it) {
        linked.insert((*it)[1]);
        EXPECT_TRUE(anchors.contains((*it)[1])) << (*it)[1];
    }
    const std::regex chapter("<h2 id=\"([^\"]+)\"");
    for (std::sregex_iterator it(html.begin(), html.end(), chapter), end; it != end; ++it) {
        if ((*it)[1] != "inhalt") {
            EXPECT_TRUE(linked.contains((*it)[1])) << (*it)[1];
        }
    }
}

} // namespace
} // namespace zw
