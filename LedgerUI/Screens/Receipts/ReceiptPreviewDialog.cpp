#include "LedgerUI/Screens/Receipts/ReceiptPreviewDialog.h"

#include <algorithm>

#include <QCoro/QCoroTask>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFutureWatcher>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QUrl>
#include <QtConcurrent/QtConcurrentRun>

#include "LedgerCore/Client/Files/FileSaving.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Entries/EntryCopy.h"
#include "LedgerUI/Components/Buttons/IconButton.h"
#include "LedgerUI/Components/Dialogs/FileChoice.h"
#include "LedgerUI/Components/Text/ElidedLabel.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Text/FailureText.h"
#include "LedgerUI/Presentation/Text/Values/ByteText.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Receipts/ReceiptPictureView.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr QSize preferredSize{820, 700};
constexpr QSize renderRoom{1600, 1600}; // pixels, sharp in the largest window that this opens in

QString text(std::string_view key)
{
    return word(receiptWords(), key);
}

QString numbered(std::string_view key, std::size_t at, std::size_t count)
{
    return word(receiptWords(), key, {std::to_string(at), std::to_string(count)});
}

QPushButton* textButton(const char* name, QWidget* parent)
{
    auto* button = new QPushButton(parent);
    button->setObjectName(QString::fromLatin1(name));
    button->setAutoDefault(false);
    return button;
}

IconButton* iconButton(const char* name, const char* glyph, QWidget* parent)
{
    auto* button = new IconButton(QString::fromLatin1(glyph), IconButton::Frame::none, parent);
    button->setObjectName(QString::fromLatin1(name));
    return button;
}

std::string contentOf(const std::filesystem::path& path)
{
    QFile file{QString::fromStdString(path.string())};
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string{};
}

}

ReceiptPreviewDialog::ReceiptPreviewDialog(LedgerStore& store, std::vector<Attachment> receipts, std::size_t first,
                                           QWidget* parent)
    : QDialog{parent}, m_store{store}, m_receipts{std::move(receipts)}, m_at{first}
{
    setObjectName(QStringLiteral("receiptPreview"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowModality(Qt::WindowModal);
    buildLayout();
    bind();
    retranslate();
    resize(preferredSize.boundedTo(parent ? parent->window()->size() - QSize{40, 40} : preferredSize));
    m_picture->setFocus(Qt::OtherFocusReason);
    load();
}

void ReceiptPreviewDialog::buildLayout()
{
    m_previous = iconButton("receiptPrevious", "chevron-left", this);
    m_name = new ElidedLabel(TypeStep::body, Token::text, Qt::ElideMiddle, this);
    m_name->setObjectName(QStringLiteral("previewName"));
    m_name->setTextFormat(Qt::PlainText);
    m_name->setBold(true);
    m_count = new TextLabel(TypeStep::small, Token::text2, this);
    m_next = iconButton("receiptNext", "chevron-right", this);
    m_picture = new ReceiptPictureView(this);
    m_picture->setObjectName(QStringLiteral("previewPicture"));
    m_picture->setFocusPolicy(Qt::StrongFocus);
    m_pageBack = iconButton("pageBack", "chevron-up", this);
    m_pageForward = iconButton("pageForward", "chevron-down", this);
    m_pageText = new TextLabel(TypeStep::small, Token::text2, this);
    m_pageText->setObjectName(QStringLiteral("previewPage"));
    m_said = new TextLabel(TypeStep::small, Token::text2, this);
    m_said->setObjectName(QStringLiteral("previewSaid"));
    m_said->setWordWrap(true);
    m_outside = textButton("previewOutside", this);
    m_save = textButton("previewSave", this);
    m_close = textButton("previewClose", this);

    auto* head = new QHBoxLayout;
    head->setSpacing(Space::step2);
    head->addWidget(m_previous);
    head->addWidget(m_name, 1);
    head->addWidget(m_count);
    head->addWidget(m_pageBack);
    head->addWidget(m_pageText);
    head->addWidget(m_pageForward);
    head->addWidget(m_next);
    auto* foot = new QHBoxLayout;
    foot->setSpacing(Space::step2);
    foot->addWidget(m_said, 1);
    foot->addWidget(m_outside);
    foot->addWidget(m_save);
    foot->addWidget(m_close);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(Space::step4, Space::step3, Space::step4, Space::step3);
    column->setSpacing(Space::step3);
    column->addLayout(head);
    column->addWidget(m_picture, 1);
    column->addLayout(foot);
}

void ReceiptPreviewDialog::bind()
{
    connect(m_previous, &QAbstractButton::clicked, this, [this] { go(-1); });
    connect(m_next, &QAbstractButton::clicked, this, [this] { go(1); });
    connect(m_pageBack, &QAbstractButton::clicked, this, [this] { turn(-1); });
    connect(m_pageForward, &QAbstractButton::clicked, this, [this] { turn(1); });
    connect(m_outside, &QPushButton::clicked, this,
            [this] { QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(m_file.string()))); });
    connect(m_save, &QPushButton::clicked, this, &ReceiptPreviewDialog::saveCopy);
    connect(m_close, &QPushButton::clicked, this, &QDialog::reject);
    connect(&m_store, &LedgerStore::snapshotChanged, this, [this] {
        if (!m_store.snapshot())
            reject(); // the session is over, and its files with it
    });
    const auto whenFree = [this] {
        if (m_isAwaited && !m_store.isBusy())
            load();
    };
    connect(&m_store, &LedgerStore::isBusyChanged, this, whenFree, Qt::QueuedConnection);
}

void ReceiptPreviewDialog::go(int step)
{
    const auto wanted = static_cast<std::ptrdiff_t>(m_at) + step;
    if (wanted < 0 || wanted >= std::ssize(m_receipts))
        return;
    m_at = static_cast<std::size_t>(wanted);
    m_page = 0;
    load();
}

void ReceiptPreviewDialog::turn(int step)
{
    const int wanted = std::clamp(m_page + step, 0, m_pageCount - 1);
    if (wanted == m_page || m_file.empty())
        return;
    m_page = wanted;
    render();
}

void ReceiptPreviewDialog::load()
{
    const int look = ++m_look;
    m_file.clear();
    m_pageCount = 1;
    m_said->clear();
    m_picture->showText(text("preview.loading"));
    presentHead();
    m_isAwaited = m_store.isBusy();
    if (m_isAwaited)
        return;
    QCoro::connect(m_store.downloadAttachment(shown().id, false), this,
                   [this, look](const Result<std::filesystem::path>& downloaded) {
                       if (look == m_look)
                           adoptFile(downloaded);
                   });
}

void ReceiptPreviewDialog::adoptFile(const Result<std::filesystem::path>& downloaded)
{
    if (!downloaded) {
        m_picture->showText(qString(m_store.friendly(downloaded.error(), InterfaceLanguage::tag())));
        return;
    }
    m_file = *downloaded;
    render();
}

void ReceiptPreviewDialog::render()
{
    presentHead();
    auto* watcher = new QFutureWatcher<Seen>(this);
    connect(watcher, &QFutureWatcherBase::finished, this, [this, watcher, look = ++m_look] {
        watcher->deleteLater();
        if (look == m_look)
            present(watcher->result());
    });
    watcher->setFuture(QtConcurrent::run([path = m_file, mime = shown().mime, page = m_page] {
        return ReceiptPictures::read(contentOf(path), mime, renderRoom, page);
    }));
}

void ReceiptPreviewDialog::present(const Seen& seen)
{
    if (seen) {
        m_pageCount = seen->pageCount;
        m_picture->showPicture(seen->image, qString(shown().name));
    } else {
        m_picture->showText(ReceiptPictures::text(seen.error(), InterfaceLanguage::tag()));
    }
    presentHead();
}

void ReceiptPreviewDialog::presentHead()
{
    const auto count = m_receipts.size();
    setWindowTitle(numbered("preview.title", m_at + 1, count));
    m_name->setText(qString(shown().name));
    m_count->setText(byteText(shown().byteCount, InterfaceLanguage::tag()));
    m_previous->setEnabled(m_at > 0);
    m_next->setEnabled(m_at + 1 < count);
    m_previous->setVisible(count > 1);
    m_next->setVisible(count > 1);
    const bool hasPages = m_pageCount > 1;
    m_pageText->setText(
        numbered("preview.page", static_cast<std::size_t>(m_page) + 1, static_cast<std::size_t>(m_pageCount)));
    m_pageText->setVisible(hasPages);
    m_pageBack->setVisible(hasPages);
    m_pageForward->setVisible(hasPages);
    m_pageBack->setEnabled(m_page > 0);
    m_pageForward->setEnabled(m_page + 1 < m_pageCount);
    m_outside->setEnabled(!m_file.empty());
    m_save->setEnabled(!m_file.empty());
}

void ReceiptPreviewDialog::saveCopy()
{
    FileChoice::save({.name = QStringLiteral("copyChooser"),
                      .title = word(EntryCopy::words(), "saveCopy"),
                      .filter = {},
                      .place = QStandardPaths::DownloadLocation},
                     QString::fromStdString(m_file.filename().string()), this,
                     [this](const std::filesystem::path& path) { writeCopy(path); });
}

void ReceiptPreviewDialog::writeCopy(const std::filesystem::path& target)
{
    using Problem = std::optional<SavingProblem>;
    auto* watcher = new QFutureWatcher<Problem>(this);
    connect(watcher, &QFutureWatcherBase::finished, this, [this, watcher] {
        watcher->deleteLater();
        const auto problem = watcher->result();
        m_said->setTone(problem ? Token::danger : Token::ok);
        m_said->setText(problem
                            ? FailureText::ofSaving(InterfaceLanguage::tag(), word(fileWords(), "notSaved"), *problem)
                            : text("preview.saved"));
    });
    watcher->setFuture(QtConcurrent::run([path = m_file, target]() -> Problem {
        const auto content = contentOf(path);
        return content.empty() ? SavingProblem::other : FileSaving::write(target, content);
    }));
}

void ReceiptPreviewDialog::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Left:
        go(-1);
        return;
    case Qt::Key_Right:
        go(1);
        return;
    case Qt::Key_PageUp:
        turn(-1);
        return;
    case Qt::Key_PageDown:
        turn(1);
        return;
    case Qt::Key_Space:
        reject();
        return;
    default:
        QDialog::keyPressEvent(event);
    }
}

void ReceiptPreviewDialog::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QDialog::changeEvent(event);
}

void ReceiptPreviewDialog::retranslate()
{
    m_previous->setName(text("preview.previous"));
    m_next->setName(text("preview.next"));
    m_pageBack->setName(text("preview.pageBack"));
    m_pageForward->setName(text("preview.pageForward"));
    m_outside->setText(text("preview.outside"));
    m_save->setText(word(EntryCopy::words(), "saveCopy"));
    m_close->setText(word(dialogWords(), "close"));
    presentHead();
}
