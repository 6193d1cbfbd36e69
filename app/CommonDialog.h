#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/RunError.h"

namespace zw {

// The common file dialog as a window keeps it between showings: title, filter, flags and the name it returned
// last. A cancel empties the name, so that every command that opened the dialog ends there, whether it looks at
// the name or sets CancelError; the old control kept the name and let a cancelled export write to it.
class CommonDialog
{
public:
    // Flag bits as the windows pass them.
    static constexpr int kOverwritePrompt = 0x2;
    static constexpr int kHideReadOnly = 0x4;
    static constexpr int kAllowMultiselect = 0x200;
    static constexpr int kPathMustExist = 0x800;
    static constexpr int kFileMustExist = 0x1000;
    static constexpr int kCreatePrompt = 0x2000;

    struct FilterEntry
    {
        std::string description; // "XML Datei (*.XML)"
        std::vector<std::string> patterns; // "*.XML"
        bool operator==(const FilterEntry&) const = default;
    };

    // What shows the dialog: returns the chosen path, or nothing when the user cancelled. The windows put the
    // toolkit's dialog here, tests their answers.
    using Presenter = std::function<std::optional<std::string>(const CommonDialog& dialog, bool forSaving)>;

    std::string DialogTitle;
    std::string Filter;     // "Description|patterns|Description|patterns", patterns joined by ';'
    std::string DefaultExt; // added to a chosen name that has no extension
    std::string FileName;
    int Flags = 0;
    bool CancelError = false;

    void setPresenter(Presenter presenter) { m_presenter = std::move(presenter); }

    // Show the dialog. A choice becomes FileName. A cancel empties FileName and, with CancelError set, throws
    // cancelled(). Without a presenter the dialog counts as cancelled.
    void ShowSave() { show(true); }
    void ShowOpen() { show(false); }

    std::vector<FilterEntry> filterEntries() const { return parseFilter(Filter); }
    static std::vector<FilterEntry> parseFilter(std::string_view filter);

    // Error 32755, the dialog's cancel.
    static RunError cancelled();
    static constexpr int kCancelNumber = 32755;

private:
    void show(bool forSaving);

    Presenter m_presenter;
};

} // namespace zw
