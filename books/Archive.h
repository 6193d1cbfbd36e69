#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "books/BookDate.h"

namespace zw {

class ProgramPaths;

// The archive lies in the data folder (daten/archiv/JJJJ/), so the data backup packs and restores it with the
// ledger and the journal it belongs to.
std::filesystem::path archiveFolder(const ProgramPaths& paths);

// A file the archive holds: its name relative to the data folder (as the journal records it) and its SHA-256.
struct ArchivedFile
{
    std::string name;
    std::string hash;
};

// Writes `bytes` as archiv/<year>/<stem><extension>, read-only; when that name is taken, "-2", "-3", ... is added
// to the stem: an archived file is never written over. Characters a file name cannot hold become "_".
// Throws RunError (76, 70, 61, 75) and then no file is left.
ArchivedFile archiveFile(const ProgramPaths& paths, int year, std::string_view stem, std::string_view extension,
                         std::string_view bytes);

// The name of a filed receipt's archive copy: <Nummer>-<JJJJ-MM-TT>.
std::string receiptArchiveStem(std::string_view number, const BookDate& date);

// The file a journal entry's document names.
std::filesystem::path archivedPath(const ProgramPaths& paths, std::string_view name);

} // namespace zw
