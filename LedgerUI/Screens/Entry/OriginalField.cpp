#include "LedgerUI/Screens/Entry/OriginalField.h"

#include <algorithm>

#include <QComboBox>
#include <QCompleter>
#include <QLineEdit>
#include <QVBoxLayout>

#include "LedgerCore/Domain/Entries/EntryLimits.h"
#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerUI/Components/Buttons/ComboBoxLists.h"
#include "LedgerUI/Components/Fields/FieldError.h"
#include "LedgerUI/Components/Fields/FormField.h"
#include "LedgerUI/Components/Fields/LimitedEdit.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int visibleIncomes = 12;
constexpr int foldedRole = Qt::UserRole + 1;

QString folded(const QString& text)
{
    return qString(TextFold::folded(text.toStdString()));
}

/// Finds what was typed wherever it stands in a text, whatever its case and diacritics.
class FoldedCompleter final : public QCompleter {
public:
    explicit FoldedCompleter(QComboBox& box) : QCompleter{box.model(), &box}
    {
        setCompletionRole(foldedRole);
        setCompletionMode(PopupCompletion);
        setFilterMode(Qt::MatchContains);
    }

    [[nodiscard]] QStringList splitPath(const QString& typed) const override { return {folded(typed)}; }
    [[nodiscard]] QString pathFromIndex(const QModelIndex& index) const override { return index.data().toString(); }
};

}

OriginalField::OriginalField(QWidget* parent) : QWidget{parent}
{
    m_label = new TextLabel(TypeStep::small, Token::text2, this);
    m_incomes = new QComboBox(this);
    m_incomes->setObjectName(QStringLiteral("entryOriginal"));
    m_incomes->setEditable(true);
    m_incomes->lineEdit()->setObjectName(QStringLiteral("entryOriginalSearch"));
    m_incomes->setInsertPolicy(QComboBox::NoInsert);
    m_incomes->setMaxVisibleItems(visibleIncomes);
    m_incomes->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_incomes->setCompleter(new FoldedCompleter(*m_incomes));
    dressComboBox(*m_incomes);
    m_error = new FieldError(m_incomes, this);
    m_error->setObjectName(QStringLiteral("entryOriginalError"));
    m_remaining = new TextLabel(TypeStep::small, Token::text2, this);
    m_remaining->setObjectName(QStringLiteral("entryOriginalRemaining"));
    m_reference = new LimitedEdit(EntryLimits::referenceLength);
    m_reference->setObjectName(QStringLiteral("entryReference"));
    m_referenceField = new FormField(m_reference, this);
    m_label->setBuddy(m_incomes);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(Space::labelToField);
    layout->addWidget(m_label);
    layout->addWidget(m_incomes);
    layout->addWidget(m_error);
    layout->addWidget(m_remaining);
    layout->addSpacing(Space::fieldToField - Space::labelToField);
    layout->addWidget(m_referenceField);
    connect(m_incomes, &QComboBox::activated, this, [this](int index) {
        Q_EMIT originalChosen(index > 0 ? std::optional{m_rows[static_cast<std::size_t>(index - 1)].id} : std::nullopt);
    });
    // What was typed to find an income must not pass for the choice of one.
    connect(m_incomes->lineEdit(), &QLineEdit::editingFinished, this,
            [this] { m_incomes->setEditText(m_incomes->itemText(m_incomes->currentIndex())); });
    connect(m_reference, &QLineEdit::textEdited, this, &OriginalField::referenceEdited);
}

void OriginalField::offer(std::vector<EntryRefundableRow> rows)
{
    retranslate();
    m_rows = std::move(rows);
    m_incomes->clear();
    m_incomes->addItem(word(entryFormWords(), "noOriginal"));
    for (const auto& row : m_rows)
        m_incomes->addItem(row.text, qString(row.id));
    for (int at = 0; at < m_incomes->count(); ++at)
        m_incomes->setItemData(at, folded(m_incomes->itemText(at)), foldedRole);
}

void OriginalField::present(const std::optional<std::string>& chosen, const QString& reference)
{
    const auto found = chosen ? std::ranges::find(m_rows, *chosen, &EntryRefundableRow::id) : m_rows.end();
    const bool isKnown = found != m_rows.end();
    m_incomes->setCurrentIndex(isKnown ? static_cast<int>(found - m_rows.begin()) + 1 : 0);
    m_remaining->setText(isKnown ? found->remaining : QString{});
    m_remaining->setVisible(isKnown);
    if (m_reference->text() != reference)
        m_reference->setText(reference);
}

QWidget* OriginalField::focusTarget() const
{
    return m_incomes;
}

void OriginalField::retranslate()
{
    m_label->setText(word(entryFormWords(), "original"));
    nameComboBox(*m_incomes, word(entryFormWords(), "original"));
    m_incomes->lineEdit()->setPlaceholderText(word(entryFormWords(), "chooseOriginal"));
    m_referenceField->setLabel(word(entryFormWords(), "reference"));
}
