#pragma once

#include <QDialog>
#include <array>

#include "print/IssuerData.h"

class QLineEdit;
class QPlainTextEdit;
class QTabWidget;

namespace zw {

// The window aussteller_pro "3 Aussteller verwalten": three pages, each made the active one by its option.
class aussteller_pro : public QDialog
{
public:
    aussteller_pro(IssuerData& issuers, const std::array<IssuerPage, 3>& pages, QWidget* parent = nullptr);

private:
    IssuerData& m_issuers;
    QTabWidget* m_tabs = nullptr;
    QPlainTextEdit* m_texts[3] = {};
    QLineEdit* m_taxNumbers[3] = {};
};

} // namespace zw
