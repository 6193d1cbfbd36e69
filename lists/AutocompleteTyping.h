#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zw {

class Autocomplete;

// What a field shows after a completion: the whole entry, the caret where the user typed, and the completed
// tail selected behind it so the next keystroke overwrites it. Positions count UTF-16 units, as the field
// does.
struct FieldCompletion
{
    std::string text;
    int caret = 0;
    int selectionLength = 0;
};

// The typing rules of Text5 to Text8, which share one list and one backspace flag.
class AutocompleteTyping
{
public:
    explicit AutocompleteTyping(Autocomplete& list) : m_list(list) {}

    // The change event: nothing while the field is empty or the backspace flag is set, else the completion.
    std::optional<FieldCompletion> changed(std::string_view text, int caret) const;
    // The key press before the field takes it: Enter (13) adds the field's text and returns true, so the
    // notice shows; backspace (8) stops completing until any other key.
    bool keyPressed(int code, std::string_view fieldText);

    bool backspaceFlag() const { return m_backspace; }

private:
    Autocomplete& m_list;
    bool m_backspace = false;
};

} // namespace zw
