#include "ui/receipt/ReceiptFormView.h"
#include "ui/frame/QtText.h"

#include <QCalendarWidget>
#include <QLocale>
#include <QDate>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QToolButton>

#include "app/ProgramPaths.h"
#include "core/Hints.h"
#include "core/ReceiptForm.h"
#include "print/FormFonts.h"
#include "print/ReceiptLayout.h"
#include "ui/frame/FaultTrap.h"

namespace zw {
namespace {

using F = FormElement;


bool isPicture(F element) { return element == F::Image3 || element == F::Image6 || element == F::Image7; }
bool isKeyFiltered(F element) { return element == F::Text12 || element == F::Text10 || element == F::Text9; }

} // namespace

ReceiptFormView::ReceiptFormView(ReceiptForm& form, const ProgramPaths& paths, QWidget* parent)
    : QWidget(parent), m_form(form), m_paths(paths)
{
    setObjectName("picSource");
    setFixedSize(kFormWidthPixels, kFormHeightPixels);
    setMouseTracking(true);
    createWidgets();
    m_calendarButton = new QToolButton(this);
    m_calendarButton->setObjectName("Text9_calendar");
    m_calendarButton->setArrowType(Qt::DownArrow);
    m_calendarButton->setToolTip("Kalender");
    m_calendarButton->setFocusPolicy(Qt::NoFocus);
    connect(m_calendarButton, &QToolButton::clicked, this, [this] { openCalendar(); });
    placeCalendarButton();
    m_form.addListener([this](const FormChange& change) { mirror(change); });
    mirror({FormAspect::Background});
}

void ReceiptFormView::createWidgets()
{
    for (const auto& entry : receiptLayout()) {
        QWidget* widget = nullptr;
        if (isPicture(entry.element)) {
            auto* picture = new QLabel(this);
            picture->setScaledContents(true);
            widget = picture;
        } else if (entry.editable && entry.multiLine) {
            auto* edit = new QPlainTextEdit(this);
            edit->setFrameShape(QFrame::NoFrame);
            edit->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
            edit->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
            edit->viewport()->setAutoFillBackground(false);
            edit->setStyleSheet("QPlainTextEdit { background: transparent; }");
            connect(edit, &QPlainTextEdit::textChanged, this, [this, edit, element = entry.element] {
                if (m_writing[indexOf(element)])
                    return;
                QString text = edit->toPlainText();
                if (element == F::Text14 && text.size() > 82) {
                    text.truncate(82);
                    edit->setPlainText(text);
                    edit->moveCursor(QTextCursor::End);
                }
                m_writing[indexOf(element)] = true;
                m_form.setText(element, text.toStdString());
                m_writing[indexOf(element)] = false;
                for (const FieldChangedHook& hook : m_changedHooks[indexOf(element)])
                    hook(text.toStdString());
            });
            edit->viewport()->installEventFilter(this);
            edit->viewport()->setMouseTracking(true);
            edit->viewport()->setProperty("zwElement", static_cast<int>(entry.element));
            widget = edit;
        } else if (entry.editable) {
            auto* edit = new QLineEdit(this);
            edit->setFrame(false);
            edit->setAlignment(alignmentOf(entry.align));
            edit->setMaxLength(entry.maxLength);
            edit->setStyleSheet("QLineEdit { background: transparent; }");
            edit->setReadOnly(entry.typing == Typing::ReadOnly);
            const bool masked = !entry.inputMask.empty();
            if (masked)
                edit->setInputMask(
                    QString::fromUtf8(entry.inputMask.data(), static_cast<qsizetype>(entry.inputMask.size())));
            connect(edit, &QLineEdit::textEdited, this, [this, edit, masked, element = entry.element] {
                m_writing[indexOf(element)] = true;
                // The date keeps its mask's blanks, so the shorthand "0 .  .    " can be recognised.
                m_form.setText(element, (masked ? edit->displayText() : edit->text()).toStdString());
                m_writing[indexOf(element)] = false;
                for (const FieldChangedHook& hook : m_changedHooks[indexOf(element)])
                    hook(edit->text().toStdString());
            });
            widget = edit;
        } else {
            auto* label = new QLabel(this);
            label->setAlignment(Qt::AlignLeft | (entry.multiLine ? Qt::AlignTop : Qt::AlignVCenter));
            label->setWordWrap(entry.multiLine);
            widget = label;
        }
        widget->setObjectName(QString::fromUtf8(elementName(entry.element).data()));
        widget->setGeometry(entry.leftPixels(), entry.topPixels(), entry.widthPixels(), entry.heightPixels());
        widget->setMouseTracking(true);
        widget->setProperty("zwElement", static_cast<int>(entry.element));
        widget->installEventFilter(this);
        m_widgets[indexOf(entry.element)] = widget;
        mirrorFont(entry.element);
        mirrorText(entry.element);
        widget->setVisible(m_form.isVisible(entry.element));
    }
    if (auto* label1 = m_widgets[indexOf(F::Label1)])
        label1->setCursor(Qt::PointingHandCursor);
    if (auto* plus = m_widgets[indexOf(F::Label13)]) {
        plus->setToolTip("Mit einem Mausklick auf das + können Sie die Programmeinstellungen aufrufen...");
        plus->setCursor(Qt::PointingHandCursor);
    }
}

void ReceiptFormView::mirror(const FormChange& change)
{
    switch (change.aspect) {
    case FormAspect::Text:
        mirrorText(change.element);
        break;
    case FormAspect::Visibility:
        if (auto* widget = m_widgets[indexOf(change.element)])
            widget->setVisible(m_form.isVisible(change.element));
        if (change.element == F::Text9)
            placeCalendarButton();
        break;
    case FormAspect::Font:
        for (const auto& entry : receiptLayout()) {
            mirrorFont(entry.element);
            mirrorText(entry.element);
        }
        break;
    case FormAspect::Background:
        m_background = QPixmap(QString::fromStdString(m_paths.resolve(m_form.formBackground()).string()));
        update();
        break;
    case FormAspect::Picture:
        if (auto* picture = qobject_cast<QLabel*>(m_widgets[indexOf(change.element)]))
            picture->setPixmap(QPixmap(qt(m_form.picture(change.element))));
        break;
    case FormAspect::Switch:
        if (change.name == "xpCheck2")
            placeCalendarButton();
        break;
    case FormAspect::MenuCheck:
        break;
    }
}

void ReceiptFormView::placeCalendarButton()
{
    QWidget* date = m_widgets[indexOf(F::Text9)];
    // The button exists only while the switch is on, at the right end inside the date field.
    const bool shown = date != nullptr && m_form.calendarButton() == 1 && m_form.isVisible(F::Text9);
    if (shown) {
        const QRect field = date->geometry();
        m_calendarButton->setGeometry(field.right() - field.height() + 1, field.top(), field.height(), field.height());
        m_calendarButton->raise();
    }
    m_calendarButton->setVisible(shown);
}

void ReceiptFormView::openCalendar()
{
    QWidget* date = m_widgets[indexOf(F::Text9)];
    if (date == nullptr)
        return;
    auto* calendar = new QCalendarWidget(this);
    calendar->setObjectName("Kalender");
    calendar->setWindowFlags(Qt::Popup);
    calendar->setAttribute(Qt::WA_DeleteOnClose);
    calendar->setGridVisible(true);
    calendar->setLocale(QLocale(QLocale::German, QLocale::Germany)); // its month and day names, whatever LANG says
    const QDate shown = QDate::fromString(QString::fromStdString(m_form.text(F::Text9)), "dd.MM.yyyy");
    calendar->setSelectedDate(shown.isValid() || !today ? shown : today());
    auto choose = [this, calendar](QDate day) {
        m_form.setText(F::Text9, day.toString("dd.MM.yyyy").toStdString());
        calendar->close();
    };
    connect(calendar, &QCalendarWidget::clicked, this, choose);
    connect(calendar, &QCalendarWidget::activated, this, choose);
    calendar->move(date->mapToGlobal(QPoint(0, date->height())));
    calendar->show();
    calendar->setFocus();
}

void ReceiptFormView::mirrorText(FormElement element)
{
    if (element == F::Count || m_writing[indexOf(element)])
        return;
    QWidget* widget = m_widgets[indexOf(element)];
    if (widget == nullptr)
        return;
    m_writing[indexOf(element)] = true;
    const QString text = qt(m_form.text(element));
    if (auto* line = qobject_cast<QLineEdit*>(widget)) {
        if (line->text() != text && !(element == F::Text9 && line->displayText() == text))
            line->setText(text);
    } else if (auto* plain = qobject_cast<QPlainTextEdit*>(widget)) {
        QString shown = text;
        shown.replace("\r\n", "\n");
        if (plain->toPlainText() != shown)
            plain->setPlainText(shown);
    } else if (auto* label = qobject_cast<QLabel*>(widget)) {
        if (!isPicture(element)) {
            label->setText(text);
            // A one-line caption is never cut: the form's font may be a little wider than the one it was drawn for,
            // and a long label of the user's own is drawn smaller within the form, as the photograph draws it.
            if (auto entry = layoutOf(element); entry && !entry->multiLine) {
                const QFont font = formFont(m_form, element);
                const auto span = captionSpan(*entry, QFontMetrics(font).horizontalAdvance(text));
                label->setFont(span.fontScale < 1.0 ? scaledFont(font, span.fontScale) : font);
                label->setGeometry(span.left, entry->topPixels(), span.width, entry->heightPixels());
            }
        }
    }
    m_writing[indexOf(element)] = false;
}

void ReceiptFormView::mirrorFont(FormElement element)
{
    QWidget* widget = m_widgets[indexOf(element)];
    if (widget == nullptr || isPicture(element))
        return;
    widget->setFont(formFont(m_form, element));
}

FormElement ReceiptFormView::elementOf(QObject* object) const
{
    QVariant value = object->property("zwElement");
    return value.isValid() ? static_cast<FormElement>(value.toInt()) : F::Count;
}

void ReceiptFormView::showHint(FormElement element)
{
    auto hint = hintText(element);
    if (!hint.empty())
        m_form.setText(F::Label16, std::string(hint));
}

void ReceiptFormView::onFieldKey(FormElement element, FieldKeyHook hook)
{
    m_keyHooks[indexOf(element)].push_back(faulttrap::trapped(std::move(hook)));
}

void ReceiptFormView::onFieldChanged(FormElement element, FieldChangedHook hook)
{
    m_changedHooks[indexOf(element)].push_back(faulttrap::trapped(std::move(hook)));
}

void ReceiptFormView::runChangeEvent(FormElement element)
{
    const std::string text = m_form.text(element);
    for (const FieldChangedHook& hook : m_changedHooks[indexOf(element)])
        hook(text);
}

int ReceiptFormView::caretOf(FormElement element) const
{
    auto* line = qobject_cast<QLineEdit*>(m_widgets[indexOf(element)]);
    return line != nullptr ? line->cursorPosition() : -1;
}

void ReceiptFormView::selectInField(FormElement element, int start, int length)
{
    if (auto* line = qobject_cast<QLineEdit*>(m_widgets[indexOf(element)]))
        line->setSelection(start, length);
}

int keyPressCode(const QKeyEvent& key)
{
    if (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter)
        return 13;
    if (key.key() == Qt::Key_Backspace)
        return 8;
    if (!key.text().isEmpty() && key.text().at(0).isPrint() && !(key.modifiers() & Qt::ControlModifier))
        return key.text().at(0).unicode();
    return 0;
}

bool ReceiptFormView::eventFilter(QObject* watched, QEvent* event)
{
    const FormElement element = elementOf(watched);
    if (element == F::Count)
        return QWidget::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::MouseMove: {
        showHint(element);
        auto* widget = qobject_cast<QWidget*>(watched);
        if (widget && mouseMoved)
            mouseMoved(widget->mapTo(this, static_cast<QMouseEvent*>(event)->position().toPoint()));
        break;
    }
    case QEvent::MouseButtonPress:
        if (element != F::Label1)
            showHint(element);
        if (static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton && elementClicked &&
            (element == F::Label1 || element == F::Text2 || element == F::Label13)) {
            elementClicked(element);
            return element != F::Text2;
        }
        break;
    case QEvent::FocusIn:
        if (element == F::Text4)
            widgetOf(F::Text4)->setStyleSheet("QLineEdit { background: #E0E0E0; }");
        break;
    case QEvent::FocusOut:
        if (element == F::Text4)
            widgetOf(F::Text4)->setStyleSheet("QLineEdit { background: transparent; }");
        break;
    case QEvent::KeyPress: {
        auto* key = static_cast<QKeyEvent*>(event);
        for (const FieldKeyHook& hook : m_keyHooks[indexOf(element)])
            if (hook(*key))
                return true;
        if (element == F::Text9 && key->key() == Qt::Key_F10) {
            openCalendar();
            return true;
        }
        if (!isKeyFiltered(element) || !keyFilter)
            break;
        const int code = keyPressCode(*key);
        if (code == 0)
            break; // keys without a character (arrows, Delete, Tab) pass as they always did
        if (keyFilter(element, code) == 0)
            return true;
        break;
    }
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

void ReceiptFormView::mouseMoveEvent(QMouseEvent* event)
{
    if (mouseMoved)
        mouseMoved(event->position().toPoint());
    QWidget::mouseMoveEvent(event);
}

void ReceiptFormView::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor(0xF0, 0xF0, 0xF0));
    if (!m_background.isNull())
        painter.drawPixmap(0, 0, m_background);
}

} // namespace zw
