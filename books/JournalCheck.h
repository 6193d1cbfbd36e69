#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "books/BookDate.h"
#include "books/Journal.h"

namespace zw {

class ProgramPaths;

// What `journal verify` found: the chain of every entry, the replay of the ledger from the journal's start copy,
// the archived files the entries name, and belege.dat as it is now. `message` is the German sentence for the
// user; it names the first entry (or the first row of a ledger edited by hand) where something disagrees.
struct JournalVerdict
{
    bool sound = false;
    std::int64_t entries = 0;
    std::string message;
};
JournalVerdict verifyJournal(const ProgramPaths& paths);

// The entries whose local day lies within the bounds (both included), as the window lists them. Entries that
// cannot be read are passed over; verifyJournal names them.
std::vector<JournalEntry> journalEntries(const ProgramPaths& paths, std::optional<BookDate> from,
                                         std::optional<BookDate> to);

// The window's list: the entries between two typed days (empty: no bound), or the message for a day typed wrong.
struct JournalListing
{
    std::vector<JournalEntry> entries;
    std::string problem;
};
JournalListing listJournal(const ProgramPaths& paths, std::string_view fromText, std::string_view toText);
// The columns of the window's list: Nr., Zeit, Benutzer, Vorgang, Zeile, Vorher, Nachher.
inline constexpr int kJournalColumnCount = 7;
std::vector<std::string> entryCells(const JournalEntry& entry);

// An entry for a person: number, local time, user, what happened, the row and its text before and after.
std::string readableEntry(const JournalEntry& entry);
// Writes every entry within the bounds readably; returns how many.
std::int64_t showJournal(const ProgramPaths& paths, std::optional<BookDate> from, std::optional<BookDate> to,
                         std::ostream& out);

} // namespace zw
