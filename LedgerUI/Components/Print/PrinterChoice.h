#pragma once

#include <functional>
#include <memory>

#include <QPageLayout>

class QPrinter;
class QWidget;

/// The desktop's dialog for printers, over the window that asks. It is gone with the window, and `chosen` is not called
/// then, nor when a person cancels it.
namespace PrinterChoice {

/// Whether there is a printer to choose.
bool isOffered();

/// `pages` may be chosen from; the paper is a suggestion.
void open(const QPageSize& paper, QPageLayout::Orientation orientation, int pages, QWidget* over,
          std::function<void(std::shared_ptr<QPrinter>)> chosen);

}
