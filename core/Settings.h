#pragma once

#include <string>
#include <string_view>

namespace zw {

inline constexpr std::string_view kApplicationName = "Zettelwerk";
// The tip switch lives apart, under the program's file name.
inline constexpr std::string_view kTipApplicationName = "zettelwerk";

// The per-user tree of text values: application, section, key. The program's logic sees only these four
// operations; app/SettingsStore keeps them in files.
class Settings
{
public:
    virtual ~Settings() = default;

    // A key never written reads as the caller's default.
    virtual std::string get(std::string_view application, std::string_view section, std::string_view key,
                            std::string_view defaultValue) const = 0;
    virtual void save(std::string_view application, std::string_view section, std::string_view key,
                      std::string_view value) = 0;
    // Deleting what is not there is a failure (false); the program's callers ignore it.
    virtual bool remove(std::string_view application, std::string_view section, std::string_view key) = 0;
    virtual bool removeSection(std::string_view application, std::string_view section) = 0;
    // False while the application's stored tree exists but could not be read: then every key reads as its default,
    // which is no sign of a first start.
    virtual bool readable(std::string_view /*application*/) const { return true; }
};

} // namespace zw
