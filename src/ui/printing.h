#pragma once
// The printer, as the program's windows use it: a font, lines of text, a new page when a line
// does not fit, the end of the document. The program installs a backend that asks for the
// printer first; tests install one that writes a PDF file and records the lines.
#include <QString>
#include <QStringList>
#include <memory>

namespace ui {

struct PrintJob {
    QString title;                               // the document's name in the print queue
    QString fontFamily = QStringLiteral("Courier New"); // a fixed-pitch face stands in when missing
    int pointSize = 10;
    QStringList lines;
};

struct PrinterBackend {
    virtual ~PrinterBackend() = default;
    // Prints the job; false when the user cancelled or no printer could be had.
    virtual bool print(const PrintJob &job) = 0;
};

// Prints through the backend in force. Without one installed nothing is printed and the result
// is false.
bool print(const PrintJob &job);

// Returns the backend it replaced.
std::shared_ptr<PrinterBackend> installPrinter(std::shared_ptr<PrinterBackend> b);

} // namespace ui
