#include "printing_qt.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QMarginsF>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>

#include <algorithm>

namespace ui {

namespace {
void preparePrinter(QPrinter &printer, const PrintJob &job)
{
    printer.setDocName(job.title);
    QPageLayout layout = printer.pageLayout();
    layout.setUnits(QPageLayout::Millimeter);
    const QMarginsF least = layout.minimumMargins();
    printer.setPageMargins(QMarginsF(std::max(kPrintSideMarginMm, least.left()),
                                     std::max(kPrintTopBottomMarginMm, least.top()),
                                     std::max(kPrintSideMarginMm, least.right()),
                                     std::max(kPrintTopBottomMarginMm, least.bottom())),
                           QPageLayout::Millimeter);
}
} // namespace

QFont printFont(const PrintJob &job)
{
    QFont font(job.fontFamily, job.pointSize);
    if (QFontInfo(font).fixedPitch())
        return font;
    // Font matching may answer a missing face with a proportional one; ask for fixed pitch.
    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fixed.setStyleHint(QFont::TypeWriter);
    fixed.setFixedPitch(true);
    fixed.setPointSize(job.pointSize);
    return fixed;
}

bool renderJob(QPrinter &printer, const PrintJob &job)
{
    QPainter painter;
    if (!painter.begin(&printer))
        return false;
    painter.setFont(printFont(job));
    const QFontMetrics fm = painter.fontMetrics();
    const int lineHeight = fm.lineSpacing();
    const int pageHeight = printer.height();
    int top = 0;
    for (const QString &line : job.lines) {
        if (top > 0 && top + lineHeight > pageHeight) {
            printer.newPage();
            top = 0;
        }
        painter.drawText(0, top + fm.ascent(), line);
        top += lineHeight;
    }
    return painter.end();
}

bool SystemPrinter::print(const PrintJob &job)
{
    QPrinter printer(QPrinter::HighResolution);
    preparePrinter(printer, job);
    QPrintDialog dialog(&printer, QApplication::activeWindow());
    if (dialog.exec() != QDialog::Accepted)
        return false;
    return renderJob(printer, job);
}

bool PdfPrinter::print(const PrintJob &job)
{
    if (cancel)
        return false;
    if (!path.isEmpty()) {
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(path);
        printer.setPageSize(QPageSize(QPageSize::A4));
        preparePrinter(printer, job);
        if (!renderJob(printer, job))
            return false;
    }
    printed.append(job);
    return true;
}

} // namespace ui
