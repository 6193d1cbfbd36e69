#pragma once

#include <QDialog>

#include "print/PictureCommands.h"

class QLineEdit;

namespace zw {

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
