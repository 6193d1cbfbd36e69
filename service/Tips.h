#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace zw {

class Settings;

// The tip of the day: one tip per line of daten/Tipofday.txt, heading and body parted by the first ";", "\n" in the
// body for a line break.
class TipList
{
public:
    // Reads the trimmed non-blank lines and draws the first tip: Int(draw() × count) + 1, 1 above the count.
    // False, with no tips, when the file is missing or cannot be read.
    bool LoadTips(const std::filesystem::path& path, const std::function<double()>& draw);

    struct Shown
    {
        std::string caption; // lblTipCaption
        std::string content; // txtTipContent, "\n" made CR LF
        std::string count;   // lblCount: "3 of 21"
    };
    // The current tip's parts. A line without ";" has no body: throws RunError 9.
    Shown DisplayCurrentTip() const;

    void next();     // past the last back to the first
    void previous(); // before the first to the last

    std::size_t count() const { return m_tips.size(); }
    int CurrentTip = 0; // from 1; 0 while nothing is loaded

private:
    std::vector<std::string> m_tips;
};

// The notice of the menu command while tips are switched off, lines parted by CR.
std::string tipsOffNotice();

// `Show Tips at Startup` under the program's own application name; a value that is no number counts as off.
bool tipsAtStartup(const Settings& settings);
void setTipsAtStartup(Settings& settings, bool on);

} // namespace zw
