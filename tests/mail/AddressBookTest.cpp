#include "mail/AddressBook.h"

#include <gtest/gtest.h>

#include "tests/app/PeerProgram.h"
#include "tests/app/TempFolder.h"

namespace zw {
namespace {

// Python's csv module reads adressbuch.dat as what it is: Windows-1252, ";" between fields, no quoting, CR LF.
constexpr const char* kPythonReader =
    "/usr/bin/python3 -c 'import csv,sys\n"
    "raw = open(sys.argv[1], \"rb\").read()\n"
    "assert raw.count(b\"\\r\\n\") == raw.count(b\"\\n\") == raw.count(b\"\\r\"), \"lines end in CR LF\"\n"
    "for row in csv.reader(open(sys.argv[1], encoding=\"cp1252\", newline=\"\"), delimiter=\";\", "
    "quoting=csv.QUOTE_NONE): print(\"|\".join(row))' ";

TEST(AddressBook, PythonReadsTheSavedFileAsSemicolonSeparatedWindows1252)
{
    const test::TempFolder folder;
    ListTable book(addressBookKind());
    const std::vector<std::vector<std::string>> contacts = {
        {"juergen@example.org", "Jürgen", "Weiß", "Herr"}, {"info@example.org", "", "Café Ölmühle", ""}};
    for (std::size_t row = 0; row < contacts.size(); ++row) {
        book.insertRow(static_cast<int>(row));
        for (std::size_t column = 0; column < 4; ++column)
            book.setCell(static_cast<int>(row), static_cast<int>(column), contacts[row][column]);
    }
    book.save(folder / "adressbuch.dat");
    int status = -1;
    EXPECT_EQ(test::runPeer(kPythonReader + (folder / "adressbuch.dat").string(), &status),
              "juergen@example.org|Jürgen|Weiß|Herr\ninfo@example.org||Café Ölmühle|\n");
    EXPECT_EQ(status, 0);
}

TEST(AddressBook, AFileWrittenByPythonGivesTheGreetingAndTheDeleteQuestion)
{
    const test::TempFolder folder;
    ASSERT_EQ(test::run("/usr/bin/python3 -c 'import csv,sys\n"
                        "csv.writer(open(sys.argv[1], \"w\", encoding=\"cp1252\", newline=\"\"), delimiter=\";\", "
                        "lineterminator=\"\\r\\n\").writerows([[\"anna@example.org\", \"Anna\", \"Größe\", \"Frau\"], "
                        "[\"ohne@example.org\", \"Max\", \"Muster\", \"\"]])' " +
                        (folder / "adressbuch.dat").string())
                  .exitCode,
              0);
    ListTable book(addressBookKind());
    book.load(folder / "adressbuch.dat");
    ASSERT_EQ(book.rowCount(), 2);
    EXPECT_EQ(greetingFor(book, 0), "Guten Tag Frau Anna Größe,\r\n\r\n");
    EXPECT_EQ(greetingFor(book, 1), "Guten Tag  Max Muster,\r\n\r\n") << "an empty salutation keeps its blanks";
    EXPECT_EQ(deleteContactQuestion(book, 0),
              "Wollen Sie den Eintrag:\r\rFrau Anna Größe\ranna@example.org\r\rwirklich löschen?");
}

} // namespace
} // namespace zw
