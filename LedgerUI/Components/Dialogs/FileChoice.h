#pragma once

#include <filesystem>
#include <functional>
#include <vector>

#include <QStandardPaths>
#include <QString>

class QWidget;

/// The desktop's dialog for files, over the window that asks. It is gone with the window, and `chosen` is not called
/// then, nor when a person cancels it.
namespace FileChoice {

struct Question {
    QString name; // of the dialog, for who looks for it
    QString title;
    QString filter; // "CSV files (*.csv)"; every file without one
    QStandardPaths::StandardLocation place = QStandardPaths::DocumentsLocation;
};

using Path = std::filesystem::path;

/// The filter for tables as text, in the interface language.
QString csvFiles();

void open(const Question& question, QWidget* over, std::function<void(const Path&)> chosen);
void openSeveral(const Question& question, QWidget* over, std::function<void(const std::vector<Path>&)> chosen);
/// Asks before a file is replaced. A name typed without an ending gets the one of `suggestion`.
void save(const Question& question, const QString& suggestion, QWidget* over, std::function<void(const Path&)> chosen);

}
