#pragma once

#include <string>
#include <vector>

#include <QWidget>

class SegmentedControl;

/// The currency that a report is about.
class CurrencySegments final : public QWidget {
    Q_OBJECT
public:
    explicit CurrencySegments(const QString& name, QWidget* parent = nullptr);

    void present(std::vector<std::string> codes, const std::string& chosen);

Q_SIGNALS:
    void currencyChosen(const QString& code);

private:
    std::vector<std::string> m_codes;
    SegmentedControl* m_control = nullptr;
};
