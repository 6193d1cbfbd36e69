#include "lists/AutocompleteTyping.h"

#include <algorithm>

#include "lists/Autocomplete.h"

namespace zw {

std::optional<FieldCompletion> AutocompleteTyping::changed(std::string_view text, int caret) const
{
    if (text.empty() || m_backspace)
        return std::nullopt;
    std::string completed = m_list.Complete(text, IgnoreCase::Yes);
    if (completed.empty())
        return std::nullopt;
    const int length = fieldLength(completed);
    caret = std::clamp(caret, 0, length);
    return FieldCompletion{std::move(completed), caret, length - caret};
}

bool AutocompleteTyping::keyPressed(int code, std::string_view fieldText)
{
    if (code == 13) {
        m_list.AddEntry(std::string(fieldText));
        return true; // the backspace flag stays as it was
    }
    m_backspace = code == 8;
    return false;
}

} // namespace zw
