#pragma once

#include <QDialog>

#include "lists/ListReport.h"

namespace zw {

// frmReportSetup, "WebReport-Einstellungen": the report's title, rows per page, formatting and display.
class frmReportSetup : public QDialog
{
public:
    explicit frmReportSetup(QWidget* parent = nullptr);
    ReportOptions options() const;
};

} // namespace zw
