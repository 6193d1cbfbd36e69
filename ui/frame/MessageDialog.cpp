#include "ui/frame/MessageDialog.h"
#include "ui/frame/QtText.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>


namespace zw {
namespace {


// The program ends message lines with a bare carriage return.
QString displayText(std::string_view text)
{
    QString shown = qt(text);
    shown.replace("\r\n", "\n");
    shown.replace('\r', '\n');
    return shown;
}

// The icon bits of the platform's style number: 16 error, 32 question, 48 warning, 64 information.
QStyle::StandardPixmap iconFor(int style)
{
    switch (style & 0x70) {
    case 16:
        return QStyle::SP_MessageBoxCritical;
    case 32:
        return QStyle::SP_MessageBoxQuestion;
    case 48:
        return QStyle::SP_MessageBoxWarning;
    default:
        return QStyle::SP_MessageBoxInformation;
    }
}

} // namespace

MessageDialog::MessageDialog(QWidget* parent, Shape shape, std::string_view text, int style, std::string_view title,
                             std::string_view initial, const HelpOpener& openHelp, const QStringList& captions)
    : QDialog(parent)
{
    setWindowTitle(qt(title));
    if (shape == Shape::Box) {
        setObjectName("MessageBox");
    } else {
        setObjectName("MessageDialog");
        setAutoFillBackground(true);
        QPalette colours = palette();
        colours.setColor(QPalette::Window, QColor(0xFF, 0xFF, 0xCC));
        setPalette(colours);
    }

    auto* icon = new QLabel(this);
    icon->setPixmap(QApplication::style()->standardIcon(iconFor(style)).pixmap(32, 32));
    icon->setAlignment(Qt::AlignTop);
    auto* message = new QLabel(displayText(text), this);
    message->setObjectName("text");
    message->setTextInteractionFlags(Qt::TextSelectableByMouse);
    // A long line wraps at two thirds of the screen, so that the box and its buttons stay on it.
    const QScreen* screen = parent ? parent->screen() : QGuiApplication::primaryScreen();
    const int widest = screen ? screen->availableGeometry().width() * 2 / 3 : 640;
    if (message->sizeHint().width() > widest) {
        message->setWordWrap(true);
        message->setFixedWidth(widest);
    }
    auto* textColumn = new QVBoxLayout;
    textColumn->addWidget(message);
    if (shape == Shape::Text) {
        m_input = new QLineEdit(qt(initial), this);
        m_input->setObjectName("input");
        m_input->selectAll();
        textColumn->addWidget(m_input);
    }
    auto* top = new QHBoxLayout;
    top->addWidget(icon);
    top->addLayout(textColumn, 1);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    auto addButton = [&](const QString& caption, int answer, bool isDefault) {
        auto* button = new QPushButton(caption, this);
        button->setDefault(isDefault);
        connect(button, &QPushButton::clicked, this, [this, answer] {
            m_answer = answer;
            answer == kAnswerCancel || answer == kAnswerNo ? reject() : accept();
        });
        buttons->addWidget(button);
        return button;
    };
    if (shape == Shape::Box) {
        const bool secondIsDefault = (style & 0x300) == 256;
        switch (style & 0x7) {
        case 1:
            addButton("OK", kAnswerOk, !secondIsDefault);
            addButton("Abbrechen", kAnswerCancel, secondIsDefault);
            break;
        case 4:
            // Closing a yes/no box is its no.
            m_answer = kAnswerNo;
            addButton("Ja", kAnswerYes, !secondIsDefault);
            addButton("Nein", kAnswerNo, secondIsDefault);
            break;
        default:
            m_answer = kAnswerOk;
            addButton("OK", kAnswerOk, true);
            break;
        }
    } else if (!captions.isEmpty()) {
        for (int i = 0; i < captions.size(); ++i)
            addButton(captions[i], i == 0 ? kAnswerYes : kAnswerNo, i == 0);
    } else if (shape == Shape::Message) {
        addButton("OK", kAnswerOk, true);
        addButton("JA", kAnswerYes, false);
    } else {
        // The same three buttons for every style: "Okay" is the yes of a yes/no question.
        addButton("Okay", shape == Shape::Question && (style & 0x7) == 4 ? kAnswerYes : kAnswerOk, true);
        addButton("Abbrechen", kAnswerCancel, false);
        auto* help = addButton("Hilfe", -1, false);
        disconnect(help, nullptr, this, nullptr);
        connect(help, &QPushButton::clicked, this, [openHelp] {
            if (openHelp)
                openHelp();
        });
    }
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addLayout(buttons);
    setModal(true);
}

int MessageDialog::showMessage(QWidget* parent, std::string_view text, MessageStyle style, std::string_view title)
{
    MessageDialog dialog(parent, Shape::Message, text, static_cast<int>(style), title, {}, {});
    dialog.exec();
    return dialog.m_answer;
}

int MessageDialog::messageBox(QWidget* parent, std::string_view text, int style, std::string_view title)
{
    MessageDialog dialog(parent, Shape::Box, text, style, title, {}, {});
    dialog.exec();
    return dialog.m_answer;
}

int MessageDialog::askWithCaptions(QWidget* parent, std::string_view text, MessageStyle style, std::string_view title,
                                   const QStringList& captions)
{
    MessageDialog dialog(parent, Shape::Message, text, static_cast<int>(style), title, {}, {}, captions);
    dialog.exec();
    return dialog.m_answer;
}

int MessageDialog::confirmQuestion(QWidget* parent, std::string_view text, MessageStyle style,
                                   std::string_view title, const HelpOpener& openHelp)
{
    MessageDialog dialog(parent, Shape::Question, text, static_cast<int>(style), title, {}, openHelp);
    dialog.exec();
    // A warning or information "question" answers yes with its Okay button.
    if (dialog.m_answer == kAnswerOk && style != MessageStyle::QuestionOkCancel)
        return kAnswerYes;
    return dialog.m_answer;
}

std::optional<std::string> MessageDialog::askText(QWidget* parent, std::string_view text, MessageStyle style,
                                                  std::string_view title, std::string_view initial,
                                                  const HelpOpener& openHelp)
{
    MessageDialog dialog(parent, Shape::Text, text, static_cast<int>(style), title, initial, openHelp);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return dialog.m_input->text().toStdString();
}

} // namespace zw
