#include "LedgerUI/Screens/Receipts/ReceiptInput.h"

#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

ReceiptInput::ReceiptInput(QWidget& area) : QObject{&area}, m_area{area}
{
    area.setAcceptDrops(true);
    qApp->installEventFilter(this);
}

std::vector<ReceiptSource> ReceiptInput::sourcesOf(const QMimeData& data)
{
    std::vector<ReceiptSource> sources;
    for (const auto& url : data.urls()) {
        if (url.isLocalFile())
            sources.push_back({.name = QFileInfo{url.toLocalFile()}.fileName(), .path = url.toLocalFile()});
    }
    if (sources.empty() && data.hasImage()) {
        auto image = qvariant_cast<QImage>(data.imageData());
        if (!image.isNull())
            sources.push_back({.name = word(receiptWords(), "pasted") + QStringLiteral(".png"),
                               .path = {},
                               .image = std::move(image)});
    }
    return sources;
}

bool ReceiptInput::eventFilter(QObject* watched, QEvent* event)
{
    const auto* widget = m_isOpen ? qobject_cast<QWidget*>(watched) : nullptr;
    if (!widget || (widget != &m_area && !m_area.isAncestorOf(widget)))
        return false;
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        return takeDrop(*event);
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
        return takePaste(*watched, *event);
    default:
        return false;
    }
}

bool ReceiptInput::takeDrop(QEvent& event)
{
    auto& drop = static_cast<QDropEvent&>(event);
    const auto* data = drop.mimeData();
    if (!data || (!data->hasUrls() && !data->hasImage()))
        return false;
    const auto sources = event.type() == QEvent::Drop ? sourcesOf(*data) : std::vector<ReceiptSource>{};
    drop.setDropAction(Qt::CopyAction);
    drop.accept();
    if (!sources.empty())
        Q_EMIT given(sources);
    return true;
}

bool ReceiptInput::takePaste(QObject& watched, QEvent& event)
{
    if (!static_cast<QKeyEvent&>(event).matches(QKeySequence::Paste))
        return false;
    const auto* data = QApplication::clipboard()->mimeData();
    if (!data)
        return false;
    // Copied text often comes with a picture of itself: in a field the text is meant.
    if (!data->hasUrls() && data->hasText() && qobject_cast<QLineEdit*>(&watched))
        return false;
    const auto sources = sourcesOf(*data);
    if (sources.empty())
        return false;
    event.accept();
    if (event.type() == QEvent::KeyPress)
        Q_EMIT given(sources);
    return true;
}
