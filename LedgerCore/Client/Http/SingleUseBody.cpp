#include "LedgerCore/Client/Http/SingleUseBody.h"

#include <algorithm>
#include <utility>

SingleUseBody::SingleUseBody(std::string text, QObject* parent) : QIODevice(parent), m_text(std::move(text))
{
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

qint64 SingleUseBody::size() const
{
    return static_cast<qint64>(m_text.size());
}

bool SingleUseBody::seek(qint64 position)
{
    return !m_isBegun && QIODevice::seek(position);
}

qint64 SingleUseBody::readData(char* data, qint64 length)
{
    m_isBegun = true;
    const auto from = static_cast<std::size_t>(pos());
    return static_cast<qint64>(m_text.copy(data, static_cast<std::size_t>(length), std::min(from, m_text.size())));
}

qint64 SingleUseBody::writeData(const char*, qint64)
{
    return -1;
}
