#include "mail/AddressBook.h"

namespace zw {

const ListKind& addressBookKind()
{
    static const ListKind kind{"adressbuch",
                               "Adressbuch",
                               "daten/adressbuch.dat",
                               {{"email_list", "E-Mail Adresse", 2100},
                                {"vorname", "Vorname", 1715},
                                {"nachname", "Nachname", 1715},
                                {"anrede", "Anrede", 1715}},
                               false};
    return kind;
}

std::string deleteContactQuestion(const ListTable& book, int row)
{
    return "Wollen Sie den Eintrag:\r\r" + book.cell(row, "anrede") + " " + book.cell(row, "vorname") + " " +
           book.cell(row, "nachname") + "\r" + book.cell(row, "email_list") + "\r\rwirklich löschen?";
}

std::string greetingFor(const ListTable& book, int row)
{
    return "Guten Tag " + book.cell(row, "anrede") + " " + book.cell(row, "vorname") + " " +
           book.cell(row, "nachname") + ",\r\n\r\n";
}

} // namespace zw
