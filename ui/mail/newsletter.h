#pragma once

#include <QDialog>

#include "mail/sevSMTP.h"
#include "ui/net/QtEventPoster.h"

namespace zw {

class ProgramPaths;
class frmLog;

// "Neuigkeiten ... Newsletter": the sign-up mail to the vendor's newsletter address.
class newsletter : public QDialog
{
public:
    newsletter(const ProgramPaths& paths, frmLog& log, QWidget* parent);

private:
    const ProgramPaths& m_paths;
    frmLog& m_log;
    QtEventPoster m_poster;
    sevSMTP m_smtp;
};

} // namespace zw
