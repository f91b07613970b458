#pragma once

#include <QLineEdit>

/// A field for words to look for: a glass before them, and behind them a button that clears.
class SearchField final : public QLineEdit {
    Q_OBJECT
public:
    explicit SearchField(QWidget* parent = nullptr);

    /// The prompt, which is also its name for readers.
    void setPrompt(const QString& prompt);
};
