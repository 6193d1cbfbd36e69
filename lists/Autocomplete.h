#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "app/FileLock.h"

namespace zw {

enum class IgnoreCase : bool
{
    No,
    Yes
};

// The list of earlier entries that Text5 to Text8 complete from, and the file autocom.dat that keeps it.
// Entries are written verbatim but read back field by field (readInputFields), so "Meier, Hans" comes back as
// two entries; that asymmetry is wanted.
class Autocomplete
{
public:
    explicit Autocomplete(std::filesystem::path file);

    // Appends the text; no test for duplicates or for empty text.
    void AddEntry(std::string text);
    // Only the search text is upper-cased, never the entries: with IgnoreCase::Yes only entries stored
    // wholly in upper case can match. Wanted.
    bool Exists(std::string_view text, IgnoreCase ignoreCase) const;
    // The first entry, in list order, that begins with the text, in its stored spelling; empty if the text
    // Exists or nothing matches.
    std::string Complete(std::string_view text, IgnoreCase ignoreCase) const;

    // A missing file leaves the list as it is. Otherwise the list starts as two empty elements and then holds
    // one element per field read, a field that Exists already staying an empty element. Throws RunError when
    // the file exists but cannot be read.
    void LoadEntries();
    // Rewrites the file whole, one element per line, holding the file's lock for the cycle. When another program
    // changed the file since it was loaded or saved here, the file is read again under the lock by the rule of
    // LoadEntries and the entries added here since are appended to that. Throws RunError on failure; a file that
    // could not be read is never written over.
    void SaveEntries();

    const std::vector<std::string>& entries() const { return m_entries; }
    const std::filesystem::path& file() const { return m_file; }

private:
    void takeFields(std::vector<std::string> fields);

    std::filesystem::path m_file;
    std::vector<std::string> m_entries;
    std::size_t m_savedCount = 0; // entries beyond this were added since the last load or save
    FileStamp m_stamp;           // the file as last loaded or saved here
};

// The fields of text as the old run time's sequential input read them: a line end or a comma ends a field,
// blanks and tabs around it fall away, and a field in double quotes keeps what stands between them (a comma
// included) and loses the rest up to the next comma. An empty line is one empty field.
std::vector<std::string> readInputFields(std::string_view text);

// The fields of autocom.dat; throws RunError 53 if it is missing, 75 if it cannot be read.
std::vector<std::string> readAutocompleteFile(const std::filesystem::path& file);

// Upper case as the old run time made it on Windows-1252 text: letters of that code page only, one for one
// (so "ß" stays), other characters unchanged.
std::string upperCase(std::string_view text);

// The length of UTF-8 text in UTF-16 units, as a text field counts its caret.
int fieldLength(std::string_view text);

} // namespace zw
