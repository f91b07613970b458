#include "LedgerUI/Screens/Receipts/ReceiptsPane.h"

#include <algorithm>

#include <QEvent>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerUI/Components/Dialogs/FileChoice.h"
#include "LedgerUI/Components/Text/GlyphLabel.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Receipts/ReceiptPictureView.h"
#include "LedgerUI/Screens/Receipts/ReceiptRowView.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int listHeight = 172; // five rows; more scroll

QString text(std::string_view key)
{
    return word(receiptWords(), key);
}

QPushButton* flatButton(const char* name, const char* glyph, QWidget* parent)
{
    auto* button = new QPushButton(parent);
    button->setObjectName(QString::fromLatin1(name));
    button->setProperty("kind", QStringLiteral("flat"));
    button->setIcon(Icon::of(QString::fromLatin1(glyph), Token::accent));
    button->setIconSize({Space::iconBeforeText, Space::icon});
    button->setAutoDefault(false);
    return button;
}

TextLabel* wrapped(TypeStep step, Token tone, QWidget* parent)
{
    auto* label = new TextLabel(step, tone, parent);
    label->setWordWrap(true);
    return label;
}

}

ReceiptsPane::ReceiptsPane(ReceiptUploads& uploads, QWidget* parent) : QWidget{parent}, m_uploads{uploads}
{
    setAttribute(Qt::WA_StyledBackground);
    buildLayout();
    connect(&m_uploads, &ReceiptUploads::changed, this, &ReceiptsPane::present);
    connect(m_photos, &QPushButton::clicked, this, [this] { chooseFiles(Wanted::pictures); });
    connect(m_files, &QPushButton::clicked, this, [this] { chooseFiles(Wanted::all); });
    retranslate();
}

void ReceiptsPane::buildLayout()
{
    m_title = new TextLabel(TypeStep::body, Token::text, this);
    m_title->setBold(true);
    m_photos = flatButton("receiptPhotos", "images", this);
    m_files = flatButton("receiptFiles", "paperclip", this);
    m_list = new QScrollArea(this);
    m_list->setObjectName(QStringLiteral("receiptList"));
    m_list->setWidgetResizable(true);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setFocusPolicy(Qt::NoFocus);
    auto* rows = new QWidget;
    m_rowLayout = new QVBoxLayout(rows);
    m_rowLayout->setContentsMargins(0, 0, 0, 0);
    m_rowLayout->setSpacing(0);
    m_rowLayout->addStretch(1);
    m_list->setWidget(rows);
    m_drop = new QFrame(this);
    m_drop->setObjectName(QStringLiteral("receiptDrop"));
    auto* drop = new QVBoxLayout(m_drop);
    drop->setSpacing(Space::step1);
    drop->addStretch(1);
    drop->addWidget(new GlyphLabel(QStringLiteral("paperclip"), Token::text2, Space::icon, m_drop), 0,
                    Qt::AlignHCenter);
    m_dropText = wrapped(TypeStep::body, Token::text2, m_drop);
    m_dropText->setAlignment(Qt::AlignHCenter);
    m_dropFormats = wrapped(TypeStep::small, Token::text2, m_drop);
    m_dropFormats->setAlignment(Qt::AlignHCenter);
    drop->addWidget(m_dropText);
    drop->addWidget(m_dropFormats);
    drop->addStretch(1);
    m_picture = new ReceiptPictureView(this);
    m_picture->setObjectName(QStringLiteral("receiptPicture"));
    m_hint = wrapped(TypeStep::small, Token::text2, this);
    m_hint->setObjectName(QStringLiteral("receiptHint"));

    auto* head = new QHBoxLayout;
    head->addWidget(m_title, 1);
    head->addWidget(m_photos);
    head->addWidget(m_files);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(Space::pageMargin, Space::step4, Space::pageMargin, Space::step4);
    column->setSpacing(Space::step3);
    column->addLayout(head);
    column->addWidget(m_list);
    column->addWidget(m_drop, 1);
    column->addWidget(m_picture, 1);
    column->addWidget(m_hint);
}

void ReceiptsPane::setLocked(bool isLocked)
{
    m_isLocked = isLocked;
    present();
}

void ReceiptsPane::addFiles(const std::vector<ReceiptSource>& sources)
{
    if (m_isLocked || sources.empty())
        return;
    m_uploads.add(sources);
    if (!m_uploads.all().empty())
        m_chosen = m_uploads.all().back().number;
    present();
}

void ReceiptsPane::present()
{
    const bool isEmpty = m_uploads.all().empty();
    const bool mayAdd = !m_isLocked && m_uploads.room() > 0;
    m_photos->setVisible(!m_isLocked);
    m_files->setVisible(!m_isLocked);
    m_photos->setEnabled(mayAdd);
    m_files->setEnabled(mayAdd);
    m_list->setVisible(!isEmpty);
    m_drop->setVisible(isEmpty);
    m_picture->setVisible(!isEmpty);
    presentRows();
    presentPicture();
    presentHint();
}

void ReceiptsPane::presentRows()
{
    const auto rows = m_uploads.rows(InterfaceLanguage::tag());
    const auto isThere = [&](int number) { return std::ranges::find(rows, number, &ReceiptRow::number) != rows.end(); };
    if (!isThere(m_chosen))
        m_chosen = rows.empty() ? 0 : rows.front().number;
    std::erase_if(m_rows, [&](const auto& each) {
        if (isThere(each.first))
            return false;
        each.second->hide();
        each.second->deleteLater(); // its button may be where the click came from
        return true;
    });
    int height = 2;
    for (const auto& row : rows) {
        auto*& view = m_rows[row.number];
        if (!view)
            view = addRow(row.number);
        view->present(row, row.number == m_chosen, m_isLocked);
        const int wrapped = view->layout()->heightForWidth(m_list->viewport()->width());
        height += wrapped > 0 ? wrapped : view->sizeHint().height();
    }
    m_list->setFixedHeight(std::min(height, listHeight));
}

ReceiptRowView* ReceiptsPane::addRow(int number)
{
    auto* row = new ReceiptRowView(m_list->widget());
    m_rowLayout->insertWidget(m_rowLayout->count() - 1, row);
    connect(row, &ReceiptRowView::chosen, this, [this, number] {
        m_chosen = number;
        present();
    });
    connect(row, &ReceiptRowView::retryWanted, this, [this, number] {
        m_chosen = number;
        m_uploads.retry(number);
        if (const auto found = m_rows.find(number); found != m_rows.end())
            found->second->focusName(); // the button that was pressed is gone
    });
    connect(row, &ReceiptRowView::removalWanted, this, [this, number] {
        m_uploads.remove(number);
        if (m_rows.empty())
            m_files->setFocus(Qt::OtherFocusReason);
        else
            m_rows.rbegin()->second->focusName();
    });
    return row;
}

void ReceiptsPane::presentPicture()
{
    const auto& all = m_uploads.all();
    const auto chosen = std::ranges::find(all, m_chosen, &ReceiptUpload::number);
    if (chosen == all.end())
        return;
    if (!chosen->ready)
        m_picture->showText(chosen->source.name);
    else if (chosen->ready->thumbnail.isNull())
        m_picture->showText(chosen->ready->unseen);
    else
        m_picture->showPicture(chosen->ready->thumbnail, qString(chosen->ready->prepared.name));
}

void ReceiptsPane::presentHint()
{
    const auto leftOut = m_uploads.leftOut();
    m_hint->setTone(leftOut > 0 ? Token::danger : Token::text2);
    if (m_isLocked)
        m_hint->setText(m_uploads.all().empty() ? QString{} : text("locked"));
    else if (leftOut > 0)
        m_hint->setText(word(receiptWords(), "limit.left", {std::to_string(leftOut)}));
    else if (m_uploads.all().empty())
        m_hint->setText(word(EntryWords::words(), "receiptLater"));
    else
        m_hint->setText(word(receiptWords(), "limit", {std::to_string(m_uploads.room())}));
}

void ReceiptsPane::chooseFiles(Wanted wanted)
{
    const bool isPictures = wanted == Wanted::pictures;
    const auto pictures = QStringLiteral("*.jpg *.jpeg *.png *.heic *.heif");
    const auto filter = isPictures ? text("filter.pictures") + QStringLiteral(" (%1)").arg(pictures)
                                   : text("filter.all") + QStringLiteral(" (%1 *.pdf)").arg(pictures);
    const auto add = [this](const std::vector<std::filesystem::path>& paths) {
        std::vector<ReceiptSource> sources;
        sources.reserve(paths.size());
        for (const auto& path : paths)
            sources.push_back({.name = qString(path.filename().string()), .path = qString(path.string())});
        addFiles(sources);
    };
    FileChoice::openSeveral(
        {.name = QStringLiteral("receiptChooser"),
         .title = text("add.title"),
         .filter = filter,
         .place = isPictures ? QStandardPaths::PicturesLocation : QStandardPaths::DocumentsLocation},
        this, add);
}

void ReceiptsPane::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QWidget::changeEvent(event);
}

void ReceiptsPane::retranslate()
{
    setAccessibleName(text("title"));
    m_title->setText(text("title"));
    m_photos->setText(word(EntryWords::words(), "photos"));
    m_files->setText(word(EntryWords::words(), "files"));
    m_dropText->setText(text("drop"));
    m_dropFormats->setText(text("formats"));
    present();
}
