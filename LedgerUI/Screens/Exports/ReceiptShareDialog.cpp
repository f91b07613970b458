#include "LedgerUI/Screens/Exports/ReceiptShareDialog.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QPrinter>
#include <QPushButton>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Entries/EntryCopy.h"
#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Buttons/SegmentedControl.h"
#include "LedgerUI/Components/Dialogs/FileChoice.h"
#include "LedgerUI/Components/Fields/FormField.h"
#include "LedgerUI/Components/Print/PagePainter.h"
#include "LedgerUI/Components/Print/PrinterChoice.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Exports/DigitalReceiptPage.h"
#include "LedgerUI/Presentation/Forms/SavedFile.h"
#include "LedgerUI/Presentation/Text/FailureText.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Exports/DigitalReceiptView.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/TypeScale.h"

namespace {

constexpr int dialogWidth = 740;
constexpr double pixelsPerUnit = DigitalReceiptPage::pictureRatio / DigitalReceiptPage::unitsPerPixel;

QString text(std::string_view key)
{
    return word(receiptWords(), key);
}

QString copyText(std::string_view key)
{
    return word(EntryCopy::words(), key);
}

QStringList families()
{
    return TypeScale::font(TypeStep::body).families();
}

}

ReceiptShareDialog::ReceiptShareDialog(LedgerStore& store, const std::string& entryID, QWidget* parent)
    : CommandForm{store, parent}, m_entry{*snapshot()->entry(entryID)}, m_choice{.locale = locale()}
{
    setObjectName(QStringLiteral("receiptShare"));
    confirmButton().setObjectName(QStringLiteral("shareSave"));
    cancelButton().setObjectName(QStringLiteral("shareClose"));
    buildBody();
    buildFoot();
    bindParts();
    present();
}

void ReceiptShareDialog::buildBody()
{
    auto* body = new QWidget(bodyPlace());
    m_view = new DigitalReceiptView(body);
    m_view->setObjectName(QStringLiteral("sharePreview"));
    auto* choices = new QVBoxLayout;
    choices->setSpacing(Space::step3);
    buildChoices(*choices, body);
    auto* columns = new QHBoxLayout(body);
    columns->setContentsMargins(Space::dialogMargin, 0, Space::dialogMargin, Space::step4);
    columns->setSpacing(Space::dialogMargin);
    columns->addWidget(m_view, 0, Qt::AlignTop);
    columns->addLayout(choices, 1);
    setBody(body, dialogWidth);
}

void ReceiptShareDialog::buildChoices(QVBoxLayout& column, QWidget* body)
{
    m_hint = new TextLabel(TypeStep::body, Token::text, body);
    m_hint->setWordWrap(true);
    column.addWidget(m_hint);
    const auto check = [&](const char* name) {
        auto* made = new QCheckBox(body);
        made->setObjectName(QString::fromLatin1(name));
        made->setChecked(true);
        column.addWidget(made, 0, Qt::AlignLeft);
        return made;
    };
    m_account = check("shareAccount");
    m_entryNote = check("shareNote");
    m_recorder = check("shareRecorder");
    m_language = new QComboBox;
    m_language->setObjectName(QStringLiteral("shareLanguage"));
    for (const auto tag : AppLanguage::supportedLocales)
        m_language->addItem(InterfaceLanguage::nativeName(tag), qString(tag));
    m_languageField = new FormField(m_language, body);
    column.addWidget(m_languageField);
    m_format = new SegmentedControl;
    m_format->setObjectName(QStringLiteral("shareFormat"));
    m_format->addSegment(png, QStringLiteral("PNG"));
    m_format->addSegment(pdf, QStringLiteral("PDF"));
    m_format->choose(png);
    m_formatField = new FormField(m_format, body);
    column.addWidget(m_formatField);
    column.addStretch(1);
}

void ReceiptShareDialog::buildFoot()
{
    auto* foot = new QWidget(this);
    m_print = new QPushButton(foot);
    m_print->setObjectName(QStringLiteral("sharePrint"));
    m_print->setAutoDefault(false);
    auto* row = new QHBoxLayout(foot);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_print);
    row->addStretch(1);
    setFootPart(foot);
    m_copy = new QPushButton(this);
    m_copy->setObjectName(QStringLiteral("shareCopy"));
    m_copy->setIcon(Icon::of(QStringLiteral("files"), Token::text));
    m_copy->setIconSize({Space::iconBeforeText, Space::icon});
    setSecondary(m_copy);
}

void ReceiptShareDialog::bindParts()
{
    const auto follow = [this](QCheckBox* box, bool& shows) {
        connect(box, &QCheckBox::toggled, this, [this, &shows](bool isOn) {
            shows = isOn;
            presentReceipt();
        });
    };
    follow(m_account, m_choice.showsAccount);
    follow(m_entryNote, m_choice.showsNote);
    follow(m_recorder, m_choice.showsRecorder);
    connect(m_language, &QComboBox::activated, this, [this](int at) {
        m_choice.locale = m_language->itemData(at).toString().toStdString();
        presentReceipt();
    });
    connect(this, &FormDialog::confirmed, this, &ReceiptShareDialog::askForFile);
    connect(m_copy, &QPushButton::clicked, this, &ReceiptShareDialog::copyImage);
    connect(m_print, &QPushButton::clicked, this, &ReceiptShareDialog::askForPrinter);
}

QWidget& ReceiptShareDialog::firstField() const
{
    return *m_account;
}

void ReceiptShareDialog::present()
{
    setWindowTitle(copyText("shareReceipt"));
    m_hint->setText(copyText("receiptShareHint"));
    m_account->setText(text("share.account"));
    m_entryNote->setText(text("share.note"));
    m_recorder->setText(text("share.recorder"));
    m_languageField->setLabel(text("share.language"));
    m_formatField->setLabel(text("share.format"));
    m_format->setName(text("share.format"));
    m_copy->setText(text("share.copy"));
    m_print->setText(word(printWords(), "action"));
    presentStanding(
        {.stage = m_stage, .note = m_note, .confirm = text("share.save"), .glyph = QStringLiteral("download")});
    cancelButton().setText(word(dialogWords(), "close"));
    m_print->setEnabled(m_stage == SubmissionStage::editing);
    presentReceipt();
}

void ReceiptShareDialog::presentReceipt()
{
    m_receipt = DigitalReceipts::of(m_entry, *snapshot(), m_choice, store().today());
    m_language->setCurrentIndex(m_language->findData(qString(m_choice.locale)));
    m_view->present(DigitalReceiptPage::alone(m_receipt, families()));
    m_view->setAccessibleName(word(printWords(), "pages"));
    m_view->setAccessibleDescription(DigitalReceipts::text(m_receipt));
}

/// The entry may be reversed by now, or no longer be the member's to see.
void ReceiptShareDialog::adoptSnapshot()
{
    takeSnapshot();
    const auto* entry = snapshot()->entry(m_entry.id);
    if (!entry)
        return leave();
    m_entry = *entry;
    present();
}

void ReceiptShareDialog::copyImage()
{
    const auto image = PagePainter::image(DigitalReceiptPage::alone(m_receipt, families()), 0, pixelsPerUnit);
    QGuiApplication::clipboard()->setImage(image);
    sayReady(text("share.copied"));
}

void ReceiptShareDialog::askForFile()
{
    const bool isPdf = m_format->chosen() == pdf;
    const auto kind = isPdf ? word(printWords(), "pdfFiles") + QStringLiteral(" (*.pdf)")
                            : text("share.pictures") + QStringLiteral(" (*.png)");
    FileChoice::save({.name = QStringLiteral("shareFileDialog"),
                      .title = copyText("shareReceipt"),
                      .filter = kind,
                      .place = isPdf ? QStandardPaths::DocumentsLocation : QStandardPaths::PicturesLocation},
                     m_receipt.fileName + (isPdf ? QStringLiteral(".pdf") : QStringLiteral(".png")), this,
                     [this](const std::filesystem::path& path) { saveTo(path); });
}

void ReceiptShareDialog::saveTo(const std::filesystem::path& path)
{
    m_stage = SubmissionStage::saving;
    m_note = {};
    present();
    const auto content = [pages = DigitalReceiptPage::alone(m_receipt, families()), isPdf = m_format->chosen() == pdf] {
        return isPdf ? PagePainter::pdf(pages) : PagePainter::png(pages, 0, pixelsPerUnit);
    };
    QCoro::connect(SavedFile::write(path, content), this, [this, path](std::optional<SavingProblem> problem) {
        m_stage = SubmissionStage::editing;
        if (problem)
            say(Banner::Kind::error, FailureText::ofSaving(locale(), copyText("receiptShareFailed"), *problem));
        else
            sayReady(word(printWords(), "saved", {path.filename().string()}));
        confirmButton().setFocus(Qt::OtherFocusReason);
    });
}

void ReceiptShareDialog::askForPrinter()
{
    if (!PrinterChoice::isOffered())
        return say(Banner::Kind::info, word(printWords(), "noPrinter"));
    const QPrinter usual;
    PrinterChoice::open(usual.pageLayout().pageSize(), QPageLayout::Portrait, 1, this,
                        [this](const std::shared_ptr<QPrinter>& printer) { printOn(*printer); });
}

void ReceiptShareDialog::printOn(QPrinter& printer)
{
    const auto pages = DigitalReceiptPage::onPaper(m_receipt, families(), printer.pageLayout());
    if (PagePainter::print(printer, pages))
        say(Banner::Kind::info, word(printWords(), "printed"));
    else
        say(Banner::Kind::error, word(printWords(), "printFailed"));
}

void ReceiptShareDialog::say(Banner::Kind kind, const QString& text)
{
    m_note = {kind, text};
    present();
}

void ReceiptShareDialog::sayReady(const QString& done)
{
    say(Banner::Kind::info, QStringLiteral("%1\n%2").arg(done, copyText("receiptReady")));
}
