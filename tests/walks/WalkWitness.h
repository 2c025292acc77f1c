// Describes the windows of a running Qt program to the process that walks through it.

#pragma once

#include <QAbstractNativeEventFilter>
#include <QGenericPlugin>
#include <QJsonObject>
#include <QLocalServer>

/// Listens on a local socket and answers every line with the visible windows and their widgets as one line of JSON.
/// The line "hurry NAME" before lets the timer of that object name expire. Positions are pixels of the screen. The answer comes from the event loop of the program, that of a modal dialog
/// included, so a program that computes answers later.
class WalkWitness : public QObject, public QAbstractNativeEventFilter
{
    Q_OBJECT
public:
    /// Listens on the socket of the path \a name.
    explicit WalkWitness(const QString& name);
    ~WalkWitness() override;

    /// Counts the keys that were pressed and the mouse buttons that were released in the program.
    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

private:
    void OnConnected();
    QJsonObject Describe() const;

    QLocalServer m_server;
    int m_received = 0;
};

/// Lets Qt load the witness into any program: QT_QPA_GENERIC_PLUGINS=walkwitness:<socket>.
class WalkWitnessPlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "witness.json")
public:
    QObject* create(const QString& name, const QString& specification) override;
};
