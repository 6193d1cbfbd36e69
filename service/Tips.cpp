#include "service/Tips.h"

#include "app/TextFile.h"
#include "core/GermanNumbers.h"
#include "core/RunError.h"
#include "core/Settings.h"
#include "service/ErrorReport.h"

namespace zw {

namespace {

std::string trimmed(const std::string& text)
{
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string::npos)
        return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

} // namespace

bool TipList::LoadTips(const std::filesystem::path& path, const std::function<double()>& draw)
{
    m_tips.clear();
    CurrentTip = 0;
    std::vector<std::string> lines;
    try {
        lines = readTextLines(path);
    } catch (const RunError&) {
        return false;
    }
    for (const auto& line : lines) {
        if (auto tip = trimmed(line); !tip.empty())
            m_tips.push_back(std::move(tip));
    }
    if (m_tips.empty())
        return true;
    const int drawn = static_cast<int>(draw() * static_cast<double>(m_tips.size())) + 1;
    CurrentTip = drawn > static_cast<int>(m_tips.size()) || drawn < 1 ? 1 : drawn;
    return true;
}

TipList::Shown TipList::DisplayCurrentTip() const
{
    if (CurrentTip < 1 || CurrentTip > static_cast<int>(m_tips.size()))
        throw RunError::subscriptOutOfRange();
    const std::string& tip = m_tips[static_cast<std::size_t>(CurrentTip - 1)];
    const auto split = tip.find(';');
    if (split == std::string::npos)
        throw RunError::subscriptOutOfRange();
    const auto bodyEnd = tip.find(';', split + 1);
    const std::string body = tip.substr(split + 1, bodyEnd == std::string::npos ? std::string::npos : bodyEnd - split - 1);
    return {tip.substr(0, split), stringReplace(body, "\\n", "\r\n"),
            std::to_string(CurrentTip) + " of " + std::to_string(m_tips.size())};
}

void TipList::next()
{
    if (m_tips.empty())
        return;
    CurrentTip = CurrentTip >= static_cast<int>(m_tips.size()) ? 1 : CurrentTip + 1;
}

void TipList::previous()
{
    if (m_tips.empty())
        return;
    CurrentTip = CurrentTip <= 1 ? static_cast<int>(m_tips.size()) : CurrentTip - 1;
}

std::string tipsOffNotice()
{
    return "Sie haben den <Tipp des Tages> deaktiviert.\r\rKlicken Sie den Menüpunkt:\r"
           "<Einstellungen/Programmeinstellungen>\ran und klicken Sie anschließend auf den Button:\r<nächste Seite>\r"
           "aktivieren Sie dort das Feld:\r<Tipp des Tages beim nächsten Programmstart aktivieren>\r\r"
           "Der <Tipp des Tages> wird nun beim nächsten Programmstart\rwieder angezeigt und kann hier auch wieder "
           "aufgerufen werden.";
}

bool tipsAtStartup(const Settings& settings)
{
    try {
        return switchValue(settings.get(kTipApplicationName, "Options", "Show Tips at Startup", "1")) != 0;
    } catch (const RunError&) {
        return false;
    }
}

void setTipsAtStartup(Settings& settings, bool on)
{
    settings.save(kTipApplicationName, "Options", "Show Tips at Startup", on ? "1" : "0");
}

} // namespace zw
