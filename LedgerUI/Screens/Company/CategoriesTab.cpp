#include "LedgerUI/Screens/Company/CategoriesTab.h"

#include <array>
#include <utility>

#include <QCheckBox>
#include <QCoro/QCoroTask>
#include <QHBoxLayout>
#include <QSplitter>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Buttons/SegmentedControl.h"
#include "LedgerUI/Components/Dialogs/MessageDialog.h"
#include "LedgerUI/Components/Fields/SearchField.h"
#include "LedgerUI/Components/Page/EmptyState.h"
#include "LedgerUI/Components/Table/PlainTable.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Keys/KeyBindings.h"
#include "LedgerUI/Presentation/Ledger/Listing/PageLink.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Categories/CategoryEditing.h"
#include "LedgerUI/Screens/Categories/CategoryEditor.h"
#include "LedgerUI/Screens/Company/PresetDialog.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int nameColumn = 0;
constexpr int editorWidth = 396;
constexpr int searchWidth = 220;
constexpr std::array kinds{EntryKind::expense, EntryKind::income};

}

CategoriesTab::CategoriesTab(LedgerStore& store, QWidget* parent) : CompanyTab{store, parent}
{
    m_view.kind = kinds.front();
    buildLayout();
    m_editing = new CategoryEditing(store, *m_editor);
    m_editing->begin(CategoryForm::fresh(m_view.kind));
    bind();
}

void CategoriesTab::buildLayout()
{
    m_table = new PlainTable(nameColumn, this);
    m_table->setObjectName(QStringLiteral("categoryTable"));
    m_none = new EmptyState(QStringLiteral("tags"), this);
    m_stack = new QStackedWidget(this);
    m_stack->addWidget(m_table);
    m_stack->addWidget(m_none);
    m_editor = new CategoryEditor(this);
    m_editor->setFixedWidth(editorWidth);
    auto* splitter = new QSplitter(Qt::Horizontal, this);
    splitter->setChildrenCollapsible(false);
    splitter->setHandleWidth(1);
    splitter->addWidget(m_stack);
    splitter->addWidget(m_editor);
    splitter->setStretchFactor(0, 1);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(buildFilters());
    rows->addWidget(splitter, 1);
}

QWidget* CategoriesTab::buildFilters()
{
    auto* filters = new QFrame(this);
    filters->setObjectName(QStringLiteral("filterRow"));
    filters->setFixedHeight(Space::filterRow);
    m_filters = filters;
    m_kinds = new SegmentedControl(filters);
    m_kinds->setObjectName(QStringLiteral("categoryKinds"));
    for (int at = 0; at < static_cast<int>(kinds.size()); ++at)
        m_kinds->addSegment(at, {});
    m_search = new SearchField(filters);
    m_search->setObjectName(QStringLiteral("categorySearch"));
    m_search->setFixedWidth(searchWidth);
    m_inactive = new QCheckBox(filters);
    m_inactive->setObjectName(QStringLiteral("categoryInactive"));
    auto* row = new QHBoxLayout(filters);
    row->setContentsMargins(Space::pageMargin, 0, Space::pageMargin, 0);
    row->setSpacing(Space::step2);
    row->addWidget(m_kinds);
    row->addWidget(m_search);
    row->addStretch(1);
    row->addWidget(m_inactive);
    return filters;
}

void CategoriesTab::bind()
{
    connect(m_kinds, &SegmentedControl::chosenByUser, this, [this](int at) {
        m_kinds->choose(m_view.kind == kinds.front() ? 0 : 1); // until nothing is lost by it
        leaveThen([this, at] {
            m_view.kind = kinds.at(static_cast<std::size_t>(at));
            m_editing->begin(CategoryForm::fresh(m_view.kind));
            present();
        });
    });
    connect(m_search, &QLineEdit::textChanged, this, [this](const QString& text) {
        m_view.query = text;
        presentTable();
    });
    connect(m_inactive, &QCheckBox::toggled, this, [this](bool isShown) {
        m_view.showsArchived = isShown;
        presentTable();
    });
    connect(m_table, &PlainTable::chosen, this, [this](const QString& id) { askThenChoose(id.toStdString()); });
    connect(m_table, &RowTable::opened, m_editor, &CategoryEditor::focusNames);
    (new ActionSet(this))
        ->present({keyedAction("searchCategories", Command::search,
                               [this] {
                                   m_search->setFocus(Qt::ShortcutFocusReason);
                                   m_search->selectAll();
                               }),
                   keyedAction("editCategory", Command::editRecord, [this] { m_editor->focusNames(); })});
    connect(m_table, &PlainTable::foldWanted, this,
            [this](const QString& id, bool folds) { fold(id.toStdString(), folds); });
    connect(m_table, &PlainTable::moveWanted, this,
            [this](int by) { send(CategoryTree::moved(*m_directory, m_table->chosenID(), by, m_view.showsArchived)); });
    connect(m_table, &PlainTable::dropWanted, this, [this](const QString& id, const QString& place) {
        send(CategoryTree::movedTo(*m_directory, id.toStdString(), place.toStdString(), m_view.showsArchived));
    });
    connect(m_editing, &CategoryEditing::edited, this, &CategoriesTab::standingChanged);
    connect(m_editing, &CategoryEditing::saved, this, &CategoriesTab::showSaved);
    connect(m_editing, &CategoryEditing::done, this, &CategoriesTab::done);
}

std::vector<Action> CategoriesTab::actions()
{
    const auto catalog = [this] {
        auto* dialog = new PresetDialog(store(), m_view.kind, window());
        connect(dialog, &PresetDialog::added, this, [this](std::size_t count) {
            Q_EMIT done(countedIn(InterfaceLanguage::tag(), categoryWords(), "added", count));
        });
        dialog->open();
    };
    std::vector<Action> actions;
    if (chosen())
        actions.push_back({.id = QStringLiteral("categoryInLedger"),
                           .text = word(companyWords(), "inLedger"),
                           .glyph = QStringLiteral("journal-text"),
                           .run = [this] {
                               Q_EMIT linkPressed({.page = WorkspacePage::ledger,
                                                   .action = PageAction::showEntries,
                                                   .entries = LedgerFilter{.categoryIDs = {m_editing->form().id}}});
                           }});
    actions.push_back({.id = QStringLiteral("categoryCatalog"),
                       .text = word(categoryWords(), "fromCatalog"),
                       .glyph = QStringLiteral("collection"),
                       .run = catalog});
    actions.push_back({.id = QStringLiteral("categoryNew"),
                       .text = word(categoryWords(), "new"),
                       .glyph = QStringLiteral("plus-lg"),
                       .ink = Token::onAccent,
                       .run = [this] { leaveThen([this] { begin(); }); }});
    return actions;
}

PageView::StatusContext CategoriesTab::statusContext() const
{
    if (m_editing->hasChanges())
        return {.text = countedIn(InterfaceLanguage::tag(), companyWords(), "changes", 1), .figure = {}};
    return {.text = m_stack->currentWidget() == m_table ? word(categoryWords(), "orderHint") : QString{}, .figure = {}};
}

QList<QWidget*> CategoriesTab::panes() const
{
    return {m_filters, m_stack->currentWidget(), m_editor};
}

const Category* CategoriesTab::chosen() const
{
    const auto& id = m_editing->form().id;
    return m_directory && !id.empty() ? m_directory->find(id) : nullptr;
}

std::size_t CategoriesTab::unsavedChanges() const
{
    return m_editing->hasChanges() ? 1 : 0;
}

void CategoriesTab::discardChanges()
{
    m_editing->dropChanges();
}

/// The tree as the new snapshot has it, and what is being changed on top of it.
void CategoriesTab::adopt()
{
    const auto snapshot = store().snapshot();
    if (m_snapshot == snapshot)
        return;
    m_directory = std::make_unique<CategoryDirectory>(snapshot->categories);
    m_snapshot = snapshot;
    m_uses = CategoryTree::uses(*snapshot, *m_directory, store().today());
    if (const auto* now = chosen())
        m_editing->rebase(CategoryForm::of(*now));
    else if (!m_editing->form().id.empty())
        m_editing->begin(CategoryForm::fresh(m_view.kind));
}

void CategoriesTab::present()
{
    adopt();
    const auto& words = categoryWords();
    m_kinds->setName(word(words, "kinds"));
    for (int at = 0; at < static_cast<int>(kinds.size()); ++at)
        m_kinds->setSegmentText(at, word(words, "kind." + std::string{kinds.at(static_cast<std::size_t>(at))}));
    m_kinds->choose(m_view.kind == kinds.front() ? 0 : 1);
    m_search->setPrompt(word(words, "search"));
    m_inactive->setText(word(words, "showInactive"));
    presentTable();
    m_editing->present();
}

void CategoriesTab::presentTable()
{
    const auto& locale = InterfaceLanguage::tag();
    const auto& words = categoryWords();
    m_table->setAccessibleName(word(words, "table"));
    auto rows = CategoryTree::rows(m_view, *m_snapshot, *m_directory, m_uses, locale);
    const bool isEmpty = rows.empty();
    m_table->setMovable(m_view.query.isEmpty());
    m_table->present(CategoryTree::columns(locale), std::move(rows));
    m_table->choose(m_editing->form().id);
    m_none->setTexts(word(words, m_view.query.isEmpty() ? "noneYet" : "none"), word(words, "noneText"));
    auto* const shown = isEmpty ? static_cast<QWidget*>(m_none) : m_table;
    if (m_stack->currentWidget() == shown)
        return;
    m_stack->setCurrentWidget(shown);
    Q_EMIT standingChanged(); // an empty list has nothing to sort
}

void CategoriesTab::leaveThen(const std::function<void()>& go)
{
    if (!m_editing->hasChanges()) {
        go();
        return;
    }
    const bool isDoubtful = m_editing->submission().isUncertain();
    MessageDialog::ask(
        {.title = word(categoryWords(), "leaveTitle"),
         .text = isDoubtful ? word(categoryWords(), "leaveDoubtful") : word(dialogWords(), "discardBody"),
         .confirm = word(dialogWords(), "discard"),
         .cancel = word(dialogWords(), "keepEditing")},
        this, [this, go] {
            m_editing->dropChanges();
            go();
        });
}

void CategoriesTab::askThenChoose(const std::string& id)
{
    if (id.empty() || id == m_editing->form().id)
        return;
    if (!m_editing->hasChanges()) {
        take(id);
        return;
    }
    // The table is still busy with choosing: it goes back once it is done.
    QMetaObject::invokeMethod(
        this,
        [this, id] {
            m_table->clearSelection();
            m_table->choose(m_editing->form().id);
            leaveThen([this, id] {
                take(id);
                m_table->choose(id);
            });
        },
        Qt::QueuedConnection);
}

void CategoriesTab::take(const std::string& id)
{
    if (const auto* category = m_directory->find(id))
        m_editing->begin(CategoryForm::of(*category));
}

void CategoriesTab::begin()
{
    const auto* near = chosen();
    auto fresh = CategoryForm::fresh(m_view.kind);
    // Beside the chosen one, or below it where it is a parent.
    if (near && !near->archived)
        fresh.parentID = near->parentID.value_or(
            m_directory->children(near->id, ArchivedCategories::leftOut).empty() ? std::string{} : near->id);
    m_table->clearSelection();
    m_table->setCurrentIndex({});
    m_editing->begin(fresh);
    m_editor->focusNames();
}

void CategoriesTab::showSaved(const std::string& id)
{
    if (!store().snapshot())
        return;
    adopt();
    m_view.folded.erase(m_editing->form().parentID);
    take(id);
    present();
    m_table->choose(id);
}

void CategoriesTab::fold(const std::string& id, bool folds)
{
    if (folds)
        m_view.folded.insert(id);
    else
        m_view.folded.erase(id);
    presentTable();
}

/// An order that somebody else has changed meanwhile is loaded anew; what is chosen stays chosen.
void CategoriesTab::send(std::optional<CategoryReorder> order)
{
    if (!order || store().isBusy() || !m_view.query.isEmpty())
        return;
    QCoro::connect(store().reorderCategories(std::move(*order)), this, [this](const Result<void>& sent) {
        if (!sent && store().snapshot())
            QCoro::connect(store().refreshQuietly(), this, [](const Result<void>&) {}); // the refusal stays in sight
    });
}
