#include "LedgerUI/Components/Text/Chip.h"

#include <array>

namespace {

constexpr std::array names{"neutral", "accent", "warn"};

}

Chip::Chip(Kind kind, QWidget* parent) : QLabel{parent}
{
    setProperty("chip", QString::fromLatin1(names[static_cast<std::size_t>(kind)]));
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}
