#pragma once

#include <vector>

#include <QWidget>

class TextLabel;
class QPushButton;

/// How the rows of a file are filled in, under what can be taken away from the form: a template, or the issues found.
class ImportGuide final : public QWidget {
    Q_OBJECT
public:
    explicit ImportGuide(QWidget* parent);

    struct Shown {
        bool howTo = false;
        bool copiesIssues = false;
        bool savesIssues = false;
    };
    void present(const Shown& shown);

Q_SIGNALS:
    void copyWanted();
    void issuesWanted();
    void templateWanted();

private:
    TextLabel* m_title = nullptr;
    std::vector<TextLabel*> m_lines;
    QPushButton* m_copyIssues = nullptr;
    QPushButton* m_saveIssues = nullptr;
    QPushButton* m_template = nullptr;
};
