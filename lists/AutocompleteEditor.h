#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "app/FileLock.h"

namespace zw {

class Autocomplete;
class FormHost;

// The window autocom_bear ("Autovervollständigungsdatei bearbeiten") without its widgets: the lines of List1
// and the caption of Label1, which only opening, adding and removing duplicates bring up to date.
class AutocompleteEditor
{
public:
    AutocompleteEditor(Autocomplete& list, FormHost& host) : m_list(list), m_host(host) {}

    // Opening: List1 from autocom.dat by the same field rule as the completion; a fault ends the loading
    // silently, and a file that could not be read is then never written over.
    void open();

    const std::vector<std::string>& lines() const { return m_lines; }
    const std::string& countCaption() const { return m_countCaption; }

    void addEntry(const std::string& text);                    // xpButton5
    void deleteMarked(const std::vector<std::size_t>& marked); // xpButton1
    void clearList();                                          // xpButton6
    void removeDuplicates();                                   // xpButton3
    // xpButton2: List1 to autocom.dat, one line per entry, under the file's lock. When another program changed
    // the file since it was opened here, what was added, edited and deleted here is laid onto what is on disk
    // (mergeLineChanges) and List1 shows the result. Throws RunError.
    void save();
    // xpButton4: reads the file back into the running completion and writes it again. Throws RunError.
    void back();

private:
    void count();

    Autocomplete& m_list;
    FormHost& m_host;
    std::vector<std::string> m_lines;
    std::vector<std::string> m_opened; // the file's entries as last opened or saved here
    FileStamp m_stamp;
    std::string m_countCaption = "Einträge: ";
};

} // namespace zw
