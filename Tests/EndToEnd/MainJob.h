#pragma once

#include <string>

#include <QString>

class MainWindow;
class ServiceChild;
class StoryTeller;

/// The main job of the program as one person does it: enter the demonstration, record an expense by keyboard alone,
/// undo it, leave and come back, and meet every mistake on the way.
class MainJob {
public:
    MainJob(StoryTeller& teller, ServiceChild& service, QString database, MainWindow& window);

    void run();

private:
    void readTheSignInScreen();
    void findTheService();
    void meetAServiceThatIsNotThere();
    void enterTheDemonstration();
    void lookAround();
    void makeMistakesInTheForm();
    void recordAnExpense();
    void reverseIt();
    void comeBackWithThePassword();
    void seeItInEachLanguage();
    void seeItSmallAndDark();

    void chooseLanguageAtSignIn(const std::string& tag);
    void waitForAlert(const QString& text);
    [[nodiscard]] int entriesShown() const;

    StoryTeller& m_teller;
    ServiceChild& m_service;
    QString m_database;
    MainWindow& m_window;
    QString m_note; // of the expense, found nowhere else
};
