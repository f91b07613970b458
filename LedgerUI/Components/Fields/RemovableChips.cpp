#include "LedgerUI/Components/Fields/RemovableChips.h"

#include <algorithm>
#include <utility>

#include <QPushButton>

#include "LedgerUI/Components/Page/WrapLayout.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"

RemovableChips::RemovableChips(QString prefix, QWidget* parent) : QWidget{parent}, m_prefix{std::move(prefix)}
{
    m_row = new WrapLayout(this, Space::step2);
    m_row->setContentsMargins(0, 0, 0, 0);
}

void RemovableChips::present(const std::vector<Entry>& entries)
{
    if (entries == m_entries)
        return;
    const auto focused = std::ranges::find_if(m_chips, [](const QWidget* chip) { return chip->hasFocus(); });
    const auto focusedAt = static_cast<std::size_t>(focused - m_chips.begin());
    const bool hadFocus = focused != m_chips.end();
    m_entries = entries;
    auto* before = m_chips.empty() ? previousInFocusChain() : m_chips.front()->previousInFocusChain();
    while (auto* item = m_row->takeAt(0))
        delete item;
    for (auto* chip : std::exchange(m_chips, {})) {
        chip->hide();
        chip->setParent(nullptr);
        chip->deleteLater(); // it may be the one whose press led here
    }
    for (const auto& each : m_entries) {
        auto* chip = new QPushButton(Icon::of(QStringLiteral("x"), Token::text2), each.text, this);
        chip->setObjectName(m_prefix + qString(each.id));
        chip->setProperty("kind", QStringLiteral("chip"));
        chip->setLayoutDirection(Qt::RightToLeft); // the cross stands behind the text
        chip->setAccessibleName(each.removeName);
        chip->setToolTip(each.removeName);
        connect(chip, &QPushButton::clicked, this, [this, id = each.id] { Q_EMIT removed(id); });
        m_chips.push_back(chip);
        m_row->addWidget(chip);
        setTabOrder(before, chip);
        before = chip;
        chip->show();
    }
    if (hadFocus && !m_chips.empty())
        m_chips[std::min(focusedAt, m_chips.size() - 1)]->setFocus(Qt::OtherFocusReason);
    updateGeometry();
}
