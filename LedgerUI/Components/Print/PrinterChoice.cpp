#include "LedgerUI/Components/Print/PrinterChoice.h"

#include <utility>

#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>

bool PrinterChoice::isOffered()
{
    return !QPrinterInfo::availablePrinterNames().isEmpty();
}

void PrinterChoice::open(const QPageSize& paper, QPageLayout::Orientation orientation, int pages, QWidget* over,
                         std::function<void(std::shared_ptr<QPrinter>)> chosen)
{
    const auto printer = std::make_shared<QPrinter>(QPrinter::HighResolution);
    printer->setPageSize(paper);
    printer->setPageOrientation(orientation);
    auto* dialog = new QPrintDialog(printer.get(), over);
    dialog->setObjectName(QStringLiteral("printerDialog"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setOption(QAbstractPrintDialog::PrintPageRange, pages > 1);
    dialog->setMinMax(1, pages);
    // The dialog writes into the printer until it is gone.
    QObject::connect(dialog, &QObject::destroyed, over, [printer] {});
    QObject::connect(dialog, qOverload<QPrinter*>(&QPrintDialog::accepted), over,
                     [printer, chosen = std::move(chosen)] { chosen(printer); });
    dialog->open();
}
