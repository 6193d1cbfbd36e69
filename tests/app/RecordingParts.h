#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "app/QuittungLogic.h"

namespace zw::test {

// The main window's parts as the logic reaches them, each call noted.
struct RecordingParts : WindowParts
{
    void runStartStep(StartStep step) override { ++started[step]; }
    void setWindowBackground(const std::string& path) override { windowBackground = path; }
    void applyMenuDesign(int style) override { menuDesign = style; }
    void applyButtonStyle(int style) override { buttonStyle = style; }
    void showRulers(bool visible) override { rulers = visible; }
    void setLastFileCaption(const std::string& caption) override { captions.push_back(caption); }

    std::map<StartStep, int> started;
    std::string windowBackground;
    int menuDesign = -1;
    int buttonStyle = -1;
    std::optional<bool> rulers;
    std::vector<std::string> captions;
};

} // namespace zw::test
