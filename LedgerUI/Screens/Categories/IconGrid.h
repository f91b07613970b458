#pragma once

#include <QWidget>

class QListView;
class QStandardItemModel;
class SearchField;
class TextLabel;

/// The icons that a category can bear, with a search in all languages.
class IconGrid final : public QWidget {
    Q_OBJECT
public:
    explicit IconGrid(QWidget* parent = nullptr);

    /// Marks the icon; one that the library does not hold is marked nowhere.
    void choose(const QString& symbol);

Q_SIGNALS:
    void chosenByUser(const QString& symbol);

protected:
    void changeEvent(QEvent* event) override;

private:
    void retranslate();
    void fill();
    void mark();

    QString m_symbol;
    SearchField* m_search = nullptr;
    QStandardItemModel* m_model = nullptr;
    QListView* m_grid = nullptr;
    TextLabel* m_none = nullptr;
};
