#include <gtest/gtest.h>
#include <regex>
#include <set>
#include <string>

#include "app/CommandCatalogue.h"
#include "app/TextFile.h"

namespace zw {
namespace {

const std::string& handbookHtml()
{
    static const std::string html = readFileBytes(ZW_HANDBOOK);
    return html;
}

// A menu entry the handbook does not name is a command a user cannot look up.
TEST(Handbook, NamesEveryMenuEntryAsTheMenuShowsIt)
{
    // The handbook as a reader sees it: no tags, every run of white space one blank.
    const std::string text =
        std::regex_replace(std::regex_replace(handbookHtml(), std::regex("<[^>]*>"), ""), std::regex("\\s+"), " ");
    for (const MenuEntry& entry : menuTree()) {
        std::string shown = parseCaption(entry.caption).text;
        // The last file's entry shows that file's path, not a caption of its own.
        if (shown == "-" || entry.name == "men_dat")
            continue;
        std::erase(shown, '&');
        SCOPED_TRACE(std::string(entry.name));
        EXPECT_NE(text.find(shown), std::string::npos) << "the handbook does not name " << shown;
    }
}

std::set<std::string> captured(const std::string& html, const char* pattern)
{
    std::set<std::string> found;
    const std::regex regex(pattern);
    for (std::sregex_iterator it(html.begin(), html.end(), regex), end; it != end; ++it)
        found.insert((*it)[1]);
    return found;
}

// The help window jumps by anchor; a link to a missing one leaves the reader at the top.
TEST(Handbook, EveryLinkReachesAnAnchorAndTheContentsListEveryChapter)
{
    const auto anchors = captured(handbookHtml(), "id=\"([^\"]+)\"");
    const auto linked = captured(handbookHtml(), "href=\"#([^\"]+)\"");
    for (const std::string& link : linked)
        EXPECT_TRUE(anchors.contains(link)) << link;
    for (const std::string& chapter : captured(handbookHtml(), "<h2 id=\"([^\"]+)\""))
        EXPECT_TRUE(chapter == "inhalt" || linked.contains(chapter)) << chapter;
}

} // namespace
} // namespace zw
