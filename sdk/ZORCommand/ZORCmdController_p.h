// What the controller knows of a published action.

#pragma once

#include <ZORCommand/ZORCmdController.h>

#include <QAction>
#include <QPointer>
#include <QVariantMap>

struct ZORCmdController::Publication
{
    const ZORCmdActionPublisher* publisher = nullptr; // key only
    const QMetaObject* command = nullptr;
    QByteArray className; // of the command
    QByteArray id;
    QString category;
    QString icon;
    QString text;
    QString toolTip;
    int position = 0;
    int placement = 0;
    QVariantMap options;
    QPointer<QAction> action; // owned; made on first use
};
