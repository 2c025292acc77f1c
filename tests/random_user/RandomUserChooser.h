// Decides what the random user does next.

#pragma once

#include "RandomUserAction.h"

#include <random>

class QWidget;
class RandomUserFiles;

/// Chooses actions by chance among what is reachable on the screen. The same seed makes the same choices in
/// front of the same windows.
class RandomUserChooser
{
public:
    /// \param files  not owned
    RandomUserChooser(const RandomUserFiles* files, unsigned seed);

    RandomUserAction Next();

private:
    int Below(int count);
    bool OneIn(int count) { return Below(count) == 0; }
    template<class List>
    auto AnyOf(const List& list)
    {
        return list[Below(int(list.size()))];
    }

    RandomUserAction ChooseInMenu(const QWidget* menu);
    RandomUserAction ChooseInFileDialog(const QWidget* window);
    RandomUserAction ChooseInWindow(QWidget* window);
    RandomUserAction ChooseForWindow(const QWidget* window);
    RandomUserAction ChooseKeys();
    /// An action that makes room when there is too much of something; without kind where there is not.
    RandomUserAction TidyUp(const QList<QWidget*>& windows);
    RandomUserAction ChooseFromMenus(const QWidget* window);
    RandomUserAction ChooseForWidget(const QWidget* window, QWidget* widget);
    RandomUserAction ClickAnywhere(const QStringList& address);
    RandomUserAction ChooseCell(const QStringList& address, const QWidget* view);
    RandomUserAction ChooseInView(const QStringList& address);
    QString AnyPlace() { return QString::number(Below(1000)); }
    QString AnyButton();
    QString AnyModifiers();
    QString AnyText();

    const RandomUserFiles* const m_files; // not owned
    std::mt19937 m_random;
    QString m_window; // address of the window of the last action
};
