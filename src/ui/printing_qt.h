#pragma once
// The printer backends on Qt's QPrinter: the user's printer through the print dialog, and a
// PDF file.
#include "printing.h"

#include <QFont>
#include <QList>

class QPrinter;

namespace ui {

// The job's face at its size; when the face is missing or not of fixed pitch, the system's
// fixed-pitch face stands in, so that columns stay columns.
QFont printFont(const PrintJob &job);

// Paints the job's lines from the top of the printable area down, one line height apart, with
// a new page whenever the next line would not fit, and ends the document. False when the
// printer could not be started.
bool renderJob(QPrinter &printer, const PrintJob &job);

// The margins every print-out gets, in millimetres, or the printer's least where it needs more.
// A quarter inch at the sides, where printers commonly begin, keeps a row of 94 columns of a
// 10-point fixed-pitch face (a memory list with full tags) on an A4 sheet.
constexpr double kPrintSideMarginMm = 6.35;
constexpr double kPrintTopBottomMarginMm = 12.7;

// Asks for the printer with the print dialog; Cancel prints nothing.
class SystemPrinter : public PrinterBackend {
public:
    bool print(const PrintJob &job) override;
};

// Writes each job to one PDF file, replacing what the file held, and records the jobs printed.
// An empty path records without writing.
class PdfPrinter : public PrinterBackend {
public:
    explicit PdfPrinter(QString path = {}) : path(std::move(path)) {}
    bool print(const PrintJob &job) override;

    QString path;
    bool cancel = false;     // answer as the print dialog's Cancel does
    QList<PrintJob> printed; // the jobs printed, in order
};

} // namespace ui
