#pragma once

#include <QDialog>
#include <array>

#include "service/FieldLabels.h"
#include "service/Tips.h"
#include "ui/frame/PartContext.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QTextEdit;

namespace zw {

class FormHost;
class Random;
class ProgramPaths;
class Quittung;
class ReceiptForm;
class Settings;

// "Feldbezeichnung ändern": the fifteen printed labels of the receipt.
class feldbezeichnung : public QDialog
{
public:
    feldbezeichnung(Settings& settings, ReceiptForm& form, QWidget* parent);

    void reset();
    void save();

private:
    Settings& m_settings;
    ReceiptForm& m_form;
    std::array<QLineEdit*, kLabelSetSize> m_fields{};
    QProgressBar* m_bar;
    std::vector<QPushButton*> m_keys;
};

// "Tipp des Tages".
class frmTipp : public QDialog
{
public:
    frmTipp(const ProgramPaths& paths, Settings& settings, FormHost& host, Random& random, QWidget* parent);

    void showTip(); // DisplayCurrentTip

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    FormHost& m_host;
    TipList m_tips;
    QLabel *m_caption, *m_count;
    QTextEdit* m_content;
    QWidget* m_bottom;
};

// "Was ist neu in dieser Version?".
class whatsnew : public QDialog
{
public:
    explicit whatsnew(QWidget* parent);
    // Loads the news file; false when it could not be read.
    bool load(const ProgramPaths& paths);

private:
    QTextEdit* m_text;
};

// "Autostartfunktion": the program in the desktop session's autostart, or out of it.
class autostart1 : public QDialog
{
public:
    autostart1(const std::string& programPath, FormHost& host, QWidget* parent);

private:
    FormHost& m_host;
    QLineEdit* m_filename;
    QPushButton* m_add;
};

// The label editor, the tips, the news and the autostart switch join the main window here.
void installSmallWindows(const PartContext& context);

} // namespace zw
