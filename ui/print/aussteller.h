#pragma once

#include <QDialog>

#include "print/IssuerData.h"

class QCheckBox;
class QLineEdit;
class QPlainTextEdit;

namespace zw {

// The window aussteller: the active issuer's text, tax number, its switch and the exemption note.
class aussteller : public QDialog
{
public:
    aussteller(IssuerData& issuers, const IssuerEntry& entry, QWidget* parent = nullptr);

private:
    IssuerData& m_issuers;
    QPlainTextEdit* m_text = nullptr;
    QLineEdit* m_taxNumber = nullptr;
    QCheckBox* m_showTaxNumber = nullptr;
    QLineEdit* m_note = nullptr;
};

} // namespace zw
