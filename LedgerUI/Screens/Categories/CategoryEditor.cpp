#include "LedgerUI/Screens/Categories/CategoryEditor.h"

#include <array>

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

#include "LedgerCore/Domain/Categories/CategoryDirectory.h"
#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerCore/Domain/Text/Naming.h"
#include "LedgerUI/Components/Buttons/ComboBoxLists.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Fields/FieldError.h"
#include "LedgerUI/Components/Fields/LimitedEdit.h"
#include "LedgerUI/Components/Text/ElidedLabel.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Categories/IconGrid.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"

namespace {

// In the order of the texts of the interface.
constexpr std::array<std::string_view, 4> languages{"zh-CN", "id-ID", "vi-VN", "en-US"};

}

CategoryEditor::CategoryEditor(QWidget* parent) : QFrame{parent}
{
    setObjectName(QStringLiteral("categoryEditor"));
    buildLayout();
    bind();
}

void CategoryEditor::buildLayout()
{
    auto* form = new QWidget;
    m_title = new ElidedLabel(TypeStep::section, Token::text, Qt::ElideRight, form);
    m_title->setObjectName(QStringLiteral("categoryTitle"));
    m_parentHead = new TextLabel(TypeStep::small, Token::text2, form);
    m_parent = new QComboBox(form);
    m_parent->setObjectName(QStringLiteral("categoryParent"));
    m_parent->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    dressComboBox(*m_parent);
    m_namesHead = new TextLabel(TypeStep::small, Token::text2, form);
    auto* names = new QGridLayout;
    names->setHorizontalSpacing(Space::step3);
    names->setVerticalSpacing(Space::step1 + 2);
    int row = 0;
    for (const auto language : languages) {
        const std::string tag{language};
        m_languages[tag] = new TextLabel(TypeStep::small, Token::text2, form);
        m_names[tag] = new LimitedEdit(Naming::maximumName, form);
        m_names[tag]->setObjectName(QStringLiteral("categoryName.") + qString(language));
        names->addWidget(m_languages[tag], row, 0);
        names->addWidget(m_names[tag], row++, 1);
        names->addWidget(m_names[tag]->counter(), row++, 1);
    }
    m_error = new FieldError(m_names.at(std::string{languages.front()}), form);
    m_pin = new QCheckBox(form);
    m_pin->setObjectName(QStringLiteral("categoryPin"));
    m_iconHead = new TextLabel(TypeStep::small, Token::text2, form);
    m_icons = new IconGrid(form);
    auto* rows = new QVBoxLayout(form);
    rows->setContentsMargins(Space::pageMargin, Space::step3, Space::pageMargin, Space::step3);
    rows->setSpacing(Space::step1);
    rows->addWidget(m_title);
    rows->addSpacing(Space::step1);
    rows->addWidget(m_parentHead);
    rows->addWidget(m_parent);
    rows->addSpacing(Space::step2);
    rows->addWidget(m_namesHead);
    rows->addLayout(names);
    rows->addWidget(m_error);
    rows->addSpacing(Space::step2);
    rows->addWidget(m_pin);
    rows->addSpacing(Space::step2);
    rows->addWidget(m_iconHead);
    rows->addWidget(m_icons, 1);
    auto* scroll = new QScrollArea(this);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setWidget(form);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(scroll, 1);
    layout->addWidget(buildFoot());
}

QWidget* CategoryEditor::buildFoot()
{
    auto* foot = new QFrame(this);
    foot->setObjectName(QStringLiteral("detailFoot"));
    m_foot = foot;
    m_archive = new QPushButton(foot);
    m_archive->setObjectName(QStringLiteral("categoryArchive"));
    m_archive->setAutoDefault(false);
    m_save = new PrimaryButton(foot);
    m_save->setObjectName(QStringLiteral("categorySave"));
    m_save->setAutoDefault(false);
    auto* row = new QHBoxLayout(foot);
    row->setContentsMargins(Space::pageMargin, Space::step3, Space::pageMargin, Space::step3);
    row->addWidget(m_archive);
    row->addStretch(1);
    row->addWidget(m_save);
    return foot;
}

void CategoryEditor::bind()
{
    connect(m_parent, &QComboBox::activated, this, [this](int at) {
        auto form = m_form;
        form.parentID = m_parent->itemData(at).toString().toStdString();
        Q_EMIT changed(form);
    });
    for (const auto& [tag, field] : m_names) {
        connect(field, &QLineEdit::textEdited, this, [this, language = tag](const QString& text) {
            auto form = m_form;
            form.names[language] = text.toStdString();
            Q_EMIT changed(form);
        });
        connect(field, &QLineEdit::returnPressed, this, &CategoryEditor::saveWanted);
    }
    connect(m_icons, &IconGrid::chosenByUser, this, [this](const QString& symbol) {
        auto form = m_form;
        form.symbol = symbol.toStdString();
        Q_EMIT changed(form);
    });
    connect(m_pin, &QCheckBox::clicked, this, &CategoryEditor::pinWanted);
    connect(m_archive, &QPushButton::clicked, this, &CategoryEditor::archiveWanted);
    connect(m_save, &QPushButton::clicked, this, &CategoryEditor::saveWanted);
}

void CategoryEditor::present(const Content& content, const LedgerSnapshot& snapshot)
{
    const auto& words = categoryWords();
    m_form = content.form;
    const bool isNew = m_form.id.empty();
    m_title->setText(content.saved.id.empty() ? word(words, "new") : content.saved.title(InterfaceLanguage::tag()));
    m_parentHead->setText(word(words, "parent"));
    presentParents(snapshot);
    presentNames();
    const bool isUncertain = !content.uncertain.isEmpty();
    m_error->present(isUncertain && !m_foot->isHidden() ? content.uncertain : content.refusal);
    m_iconHead->setText(word(words, "icon"));
    m_icons->choose(qString(m_form.symbol));
    m_pin->setText(word(words, "pin"));
    m_pin->setChecked(content.isPinned);
    m_pin->setVisible(!isNew && !content.isArchived);
    m_pin->setEnabled(content.isIdle && !content.isSent && content.whyNotPinned.isEmpty());
    m_pin->setToolTip(content.whyNotPinned);
    m_archive->setText(word(words, content.isArchived ? "restore" : "archive"));
    m_archive->setVisible(!isNew);
    m_archive->setEnabled(content.isIdle && !content.isSent && content.whyNotArchived.isEmpty());
    m_archive->setToolTip(content.whyNotArchived);
    for (auto* field : std::initializer_list<QWidget*>{m_parent, m_icons})
        field->setEnabled(!content.isSent);
    for (const auto& [tag, field] : m_names)
        field->setEnabled(!content.isSent);
    m_save->setText(isUncertain ? word(EntryWords::words(), "retryOriginal") : word(words, "save"));
    m_save->setEnabled(content.isIdle && content.form != content.saved);
}

void CategoryEditor::presentParents(const LedgerSnapshot& snapshot)
{
    const auto& locale = InterfaceLanguage::tag();
    const CategoryDirectory directory{snapshot.categories};
    m_parent->clear();
    nameComboBox(*m_parent, word(categoryWords(), "parent"));
    m_parent->addItem(word(categoryWords(), "noParent"), QString{});
    const bool hasChildren = !directory.children(m_form.id, ArchivedCategories::included).empty();
    for (const auto* each : directory.siblings(m_form.kind, std::nullopt, ArchivedCategories::included)) {
        const bool isOwn = each->id == m_form.parentID;
        if (each->id == m_form.id || (!isOwn && (each->archived || hasChildren)))
            continue;
        const auto symbol = qString(each->symbol);
        m_parent->addItem(Icon::of(Icon::exists(symbol) ? symbol : QStringLiteral("tag")),
                          qString(directory.pathName(*each, locale)), qString(each->id));
        if (isOwn)
            m_parent->setCurrentIndex(m_parent->count() - 1);
    }
}

void CategoryEditor::presentNames()
{
    m_namesHead->setText(word(categoryWords(), "names"));
    for (const auto& [tag, field] : m_names) {
        const auto native = InterfaceLanguage::nativeName(tag);
        m_languages.at(tag)->setText(native);
        field->setAccessibleName(word(categoryWords(), "nameIn", {native.toStdString()}));
        const auto found = m_form.names.find(tag);
        const auto text = found == m_form.names.end() ? QString{} : qString(found->second);
        if (field->text() != text)
            field->setText(text);
    }
}

QPushButton* CategoryEditor::takeFoot()
{
    m_foot->hide();
    return m_archive;
}

LimitedEdit& CategoryEditor::firstName() const
{
    return *m_names.at(InterfaceLanguage::tag());
}

void CategoryEditor::focusNames()
{
    firstName().setFocus(Qt::OtherFocusReason);
    firstName().selectAll();
}
