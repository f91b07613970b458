#include "LedgerUI/Screens/Company/PresetDialog.h"

#include <utility>

#include <QComboBox>
#include <QCoro/QCoroTask>
#include <QHBoxLayout>
#include <QListWidget>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Categories/CategoryDirectory.h"
#include "LedgerUI/Components/Buttons/ComboBoxLists.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Fields/SearchField.h"
#include "LedgerUI/Components/Page/Line.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Company/PresetChoices.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int dialogWidth = 720;
constexpr int groupsWidth = 250;
constexpr int listHeight = 330;
constexpr int rowHeight = 30;
constexpr int idRole = Qt::UserRole;

}

PresetDialog::PresetDialog(LedgerStore& store, std::string kind, QWidget* parent)
    : CommandForm{store, parent}, m_kind{std::move(kind)}
{
    setObjectName(QStringLiteral("presetDialog"));
    confirmButton().setObjectName(QStringLiteral("presetAdd"));
    buildBody();
    bind();
    present();
}

void PresetDialog::buildBody()
{
    auto* body = new QWidget(bodyPlace());
    m_search = new SearchField(body);
    m_search->setObjectName(QStringLiteral("presetSearch"));
    m_underHead = new TextLabel(TypeStep::small, Token::text2, body);
    m_under = new QComboBox(body);
    m_under->setObjectName(QStringLiteral("presetUnder"));
    m_under->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    dressComboBox(*m_under);
    m_groups = new QListWidget(body);
    m_groups->setObjectName(QStringLiteral("presetGroups"));
    m_groups->setFixedSize(groupsWidth, listHeight);
    m_presets = new QListWidget(body);
    m_presets->setObjectName(QStringLiteral("presetList"));
    m_presets->setFixedHeight(listHeight);
    m_presets->setIconSize({Space::icon, Space::icon});
    for (auto* list : {m_groups, m_presets}) {
        list->setProperty("choices", true);
        list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        list->setTabKeyNavigation(false);
    }
    auto* top = new QHBoxLayout;
    top->setSpacing(Space::step2);
    top->addWidget(m_search, 1);
    top->addSpacing(Space::step4);
    top->addWidget(m_underHead);
    top->addWidget(m_under, 1);
    auto* lists = new QHBoxLayout;
    lists->setSpacing(Space::step3);
    lists->addWidget(m_groups);
    lists->addWidget(new Line(Qt::Vertical, body));
    lists->addWidget(m_presets, 1);
    auto* rows = new QVBoxLayout(body);
    rows->setContentsMargins(Space::dialogMargin, 0, Space::dialogMargin, Space::step4);
    rows->setSpacing(Space::step3);
    rows->addLayout(top);
    rows->addLayout(lists, 1);
    setBody(body, dialogWidth);
}

void PresetDialog::bind()
{
    connect(m_search, &QLineEdit::textChanged, this, &PresetDialog::presentPresets);
    connect(m_groups, &QListWidget::currentRowChanged, this, [this] {
        m_search->clear();
        presentPresets();
    });
    connect(m_presets, &QListWidget::itemChanged, this, &PresetDialog::tick);
    connect(m_presets, &QListWidget::itemActivated, this, [](QListWidgetItem* item) {
        if (item->flags().testFlag(Qt::ItemIsUserCheckable))
            item->setCheckState(item->checkState() == Qt::Checked ? Qt::Unchecked : Qt::Checked);
    });
    connect(this, &FormDialog::confirmed, this, &PresetDialog::submit);
}

void PresetDialog::present()
{
    const auto& words = categoryWords();
    setWindowTitle(word(words, "catalogTitle"));
    m_search->setPrompt(word(words, "catalogSearch"));
    m_underHead->setText(word(words, "catalogUnder"));
    m_groups->setAccessibleName(word(words, "catalogGroups"));
    m_presets->setAccessibleName(word(words, "catalogPresets"));
    presentParents();
    presentGroups();
    presentPresets();
    presentFrame();
}

void PresetDialog::adoptSnapshot()
{
    takeSnapshot();
    present();
}

QWidget& PresetDialog::firstField() const
{
    return m_submission.isUncertain() ? static_cast<QWidget&>(confirmButton()) : *m_search;
}

void PresetDialog::presentParents()
{
    const auto kept = m_under->currentData();
    const CategoryDirectory directory{snapshot()->categories};
    m_under->clear();
    nameComboBox(*m_under, word(categoryWords(), "catalogUnder"));
    m_under->addItem(word(categoryWords(), "noParent"), QString{});
    for (const auto* each : directory.siblings(m_kind, std::nullopt, ArchivedCategories::leftOut))
        m_under->addItem(qString(directory.pathName(*each, locale())), qString(each->id));
    m_under->setCurrentIndex(std::max(0, m_under->findData(kept)));
}

void PresetDialog::presentGroups()
{
    const QSignalBlocker quiet{m_groups};
    const int row = std::max(0, m_groups->currentRow());
    m_groups->clear();
    for (const auto& group : PresetChoices::groups(m_kind, locale())) {
        auto* item = new QListWidgetItem(group.name, m_groups);
        item->setData(idRole, qString(group.id));
        item->setSizeHint({0, rowHeight});
        item->setToolTip(group.name);
    }
    m_groups->setCurrentRow(row);
}

void PresetDialog::presentPresets()
{
    const QSignalBlocker quiet{m_presets};
    const auto* group = m_groups->currentItem();
    const auto groupID = group ? group->data(idRole).toString().toStdString() : std::string{};
    m_presets->clear();
    for (const auto& choice : PresetChoices::presets(m_kind, groupID, m_search->text(), *snapshot(), locale())) {
        const auto present = word(categoryWords(), "present");
        auto* item = new QListWidgetItem(Icon::of(choice.glyph), choice.name, m_presets);
        item->setData(idRole, qString(choice.id));
        item->setSizeHint({0, rowHeight});
        const bool isTicked = choice.isPresent || m_submission.form().contains(choice.id);
        item->setFlags(choice.isPresent ? Qt::NoItemFlags
                                        : Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(isTicked ? Qt::Checked : Qt::Unchecked);
        item->setToolTip(choice.isPresent ? present : choice.name);
        item->setData(Qt::AccessibleTextRole, listed({choice.name, choice.isPresent ? present : QString{}}, locale()));
    }
}

void PresetDialog::presentFrame()
{
    const auto count = m_submission.form().size();
    presentStanding(
        {.stage = m_submission.stage(),
         .refusal = m_submission.refusal(),
         .confirm = count == 0 ? word(categoryWords(), "add.none") : countedIn(locale(), categoryWords(), "add", count),
         .hasChanges = count > 0});
    if (count == 0)
        confirmButton().setEnabled(false);
}

void PresetDialog::tick(QListWidgetItem* item)
{
    const auto id = item->data(idRole).toString().toStdString();
    auto ticks = m_submission.form();
    if (item->checkState() == Qt::Checked)
        ticks.insert(id);
    else
        ticks.erase(id);
    m_submission.edit(std::move(ticks));
    presentFrame();
}

void PresetDialog::submit()
{
    const auto first = [this] {
        m_waiting = PresetChoices::creations(m_submission.form(), m_under->currentData().toString().toStdString());
        m_added = 0;
        return takeNext();
    };
    if (const auto* category = commandToSend(m_submission, first))
        send(*category);
}

std::optional<CategoryCreate> PresetDialog::takeNext()
{
    if (m_waiting.empty())
        return {};
    auto next = std::move(m_waiting.front());
    m_waiting.erase(m_waiting.begin());
    return next;
}

void PresetDialog::send(const CategoryCreate& category)
{
    presentFrame();
    QCoro::connect(store().createCategory(category), this, [this](const Result<std::string>& made) { finish(made); });
}

void PresetDialog::finish(const Result<std::string>& made)
{
    if (made) {
        auto ticks = m_submission.form();
        ticks.erase(m_submission.sent().presetID.value_or(""));
        m_submission = Submission<Ticks, CategoryCreate>{std::move(ticks)};
        ++m_added;
        if (const auto* next = m_submission.submit([this] { return takeNext(); })) {
            send(*next);
        } else {
            Q_EMIT added(m_added);
            leave();
        }
        return;
    }
    m_submission.fail(made.error());
    sayHere();
    takeSnapshot();
    presentAnew();
}
