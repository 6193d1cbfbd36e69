#pragma once

#include <QPixmap>
#include <QWidget>
#include <array>
#include <bitset>
#include <functional>
#include <string>
#include <vector>

#include "core/FormElement.h"

class QDate;
class QKeyEvent;
class QToolButton;

namespace zw {

class ProgramPaths;
class ReceiptForm;
struct FormChange;

// Hooks of other parts on a receipt field (the autocompletion of Text5 to Text8): a key press before the field
// takes it (true: the hook took the key), and the field's text after the user changed it.
using FieldKeyHook = std::function<bool(const QKeyEvent& key)>;
using FieldChangedHook = std::function<void(const std::string& text)>;

// The code a key press gives a field, as the old key events numbered it: 13 RETURN, 8 backspace, else the
// character typed; 0 for keys without a character (arrows, Delete, Tab, shift) and Ctrl combinations.
int keyPressCode(const QKeyEvent& key);

// The receipt area `picSource`: the background picture and every element of the layout table at its place.
// It mirrors the form model and turns edits, clicks and keys into model calls; it computes nothing.
class ReceiptFormView : public QWidget
{
public:
    ReceiptFormView(ReceiptForm& form, const ProgramPaths& paths, QWidget* parent = nullptr);

    QWidget* widgetOf(FormElement element) const { return m_widgets[indexOf(element)]; }

    // Key filter of the amount and date fields: gets the key code (13 RETURN, 8 backspace, else the character),
    // returns it or 0 to cancel it.
    std::function<int(FormElement, int)> keyFilter;
    // A left press on Label1, Text2 or Label13.
    std::function<void(FormElement)> elementClicked;
    // The day the calendar shows when the date field holds none.
    std::function<QDate()> today;
    // The mouse moved over the form, in pixels (the rulers follow it).
    std::function<void(QPoint)> mouseMoved;

    void onFieldKey(FormElement element, FieldKeyHook hook);
    void onFieldChanged(FormElement element, FieldChangedHook hook);
    // The field's change event as typing runs it, for a text another window wrote there (a list row taken over).
    void runChangeEvent(FormElement element);
    // The caret of a line field (-1 for other elements) and a selection in it, in UTF-16 units.
    int caretOf(FormElement element) const;
    void selectInField(FormElement element, int start, int length);

protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    void createWidgets();
    void mirror(const FormChange& change);
    void mirrorText(FormElement element);
    void mirrorFont(FormElement element);
    void showHint(FormElement element);
    // The date field's calendar (F10 or its button): the chosen day goes to Text9.
    void openCalendar();
    void placeCalendarButton();
    FormElement elementOf(QObject* object) const;

    ReceiptForm& m_form;
    const ProgramPaths& m_paths;
    QPixmap m_background;
    QToolButton* m_calendarButton = nullptr;
    std::array<QWidget*, kFormElementCount> m_widgets{};
    std::array<std::vector<FieldKeyHook>, kFormElementCount> m_keyHooks;
    std::array<std::vector<FieldChangedHook>, kFormElementCount> m_changedHooks;
    // The fields being written between widget and model right now: each write must not echo back into the same
    // field, while the other fields it changes (a recalculation) still show.
    std::bitset<kFormElementCount> m_writing;
};

} // namespace zw
