#pragma once

#include <QDialog>

#include "print/IssuerData.h"
#include "print/PictureCommands.h"

class QCheckBox;
class QLineEdit;
class QPlainTextEdit;
class QTabWidget;

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

// logodatei and stunter: the picture file and whether it shows at every start.
class PictureFileWindow : public QDialog
{
public:
    PictureFileWindow(PictureCommands& commands, PictureKind kind, QWidget* parent = nullptr);

private:
    PictureCommands& m_commands;
    PictureKind m_kind;
    QLineEdit* m_file = nullptr;
};

} // namespace zw
