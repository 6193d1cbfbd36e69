#pragma once

#include <string>

#include "lists/ListTable.h"

namespace zw {

// adressbuch.dat: e-mail address, first name, last name, salutation, ";" on disk like the reference lists.
const ListKind& addressBookKind();

// The question before a contact is deleted, lines parted by CR.
std::string deleteContactQuestion(const ListTable& book, int row);
// The greeting the insert menu's "Anrede" puts into the message; empty fields keep their blanks.
std::string greetingFor(const ListTable& book, int row);

} // namespace zw
