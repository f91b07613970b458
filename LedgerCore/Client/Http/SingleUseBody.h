#pragma once

#include <string>

#include <QIODevice>

/// The body of a request, readable once. Where the connection breaks off before the reply, the transport would rewind
/// the body and send the command again, though the service may have carried it out by then.
class SingleUseBody final : public QIODevice {
public:
    SingleUseBody(std::string text, QObject* parent = nullptr);

    [[nodiscard]] qint64 size() const override;
    bool seek(qint64 position) override;

protected:
    qint64 readData(char* data, qint64 length) override;
    qint64 writeData(const char* data, qint64 length) override;

private:
    std::string m_text;
    bool m_isBegun = false;
};
