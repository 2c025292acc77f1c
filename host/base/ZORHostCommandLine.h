// The command line of the host.

#pragma once

#include <QCoreApplication>
#include <QMap>
#include <QString>
#include <QStringList>

/// What the user asked for on the command line.
struct ZORHostOptions
{
    enum class Theme { System, Light, Dark };

    QStringList plugins;        // files to load, in order
    bool defaultPlugins = true; // look in the usual places as well
    QString settingsFile;       // empty: the user's own
    bool cleanSettings = false; // start from the defaults
    Theme theme = Theme::System;
    bool themeGiven = false;          // else the stored choice counts
    QStringList filesToOpen;          // in order
    QString scriptFile;               // empty: no script
    QMap<QString, QString> variables; // of the script
};

/// Outcome of reading the command line.
struct ZORHostCommandLine
{
    Q_DECLARE_TR_FUNCTIONS(ZORHostCommandLine)

public:
    enum class Status {
        Run,   // start the program with the options
        Exit,  // print text and end with exit code 0 (--help, --version)
        Error, // print text to the error stream and end with exit code 2
    };

    Status status = Status::Run;
    QString text;
    ZORHostOptions options;

    /// \param arguments  as QCoreApplication::arguments(): the program's name first. Relative file names
    ///                   are made absolute against the current folder.
    static ZORHostCommandLine Parse(const QStringList& arguments);

    /// Returns the second name by which Parse() knows "--plugin", which QApplication would take for its own option
    /// and remove.
    /// \param argument  one argument of the process; any other is returned unchanged
    static QByteArray ProtectFromQt(const QByteArray& argument);
};
