#include "ZORCmdActionPublisher.h"

#include "ZORCmdController_p.h"

#include <ZORSystem/ZORSysApiTrace.h>

namespace {

// The literals of a library vanish with it: keep a copy of our own.
QString Copied(const QString& text)
{
    return QString(text.constData(), text.size());
}

QVariant Copied(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::QString:
        return Copied(value.toString());
    case QMetaType::QByteArray: {
        const QByteArray bytes = value.toByteArray();
        return QByteArray(bytes.constData(), bytes.size());
    }
    case QMetaType::QStringList: {
        QStringList copy;
        const QStringList texts = value.toStringList();
        for (const QString& text : texts)
            copy.append(Copied(text));
        return copy;
    }
    default:
        return value;
    }
}

} // namespace

ZORCmdActionPublisher::ZORCmdActionPublisher(const QString& category, const QMetaObject* command,
                                             const QString& icon, const QString& text, const QString& toolTip,
                                             int position, int placement, const QVariantMap& options)
{
    ZOR_TRACE_CALL(category, command, icon, text, toolTip, position, placement);
    ZORCmdController::Publication publication;
    publication.publisher = this;
    publication.command = command;
    publication.className = QByteArray(command->className());
    publication.id = publication.className;
    if (const QByteArray method = options.value(QStringLiteral("method")).toByteArray(); !method.isEmpty())
        publication.id += '.' + method;
    publication.category = Copied(category);
    publication.icon = Copied(icon);
    publication.text = Copied(text);
    publication.toolTip = Copied(toolTip);
    publication.position = position;
    publication.placement = placement;
    for (auto option = options.begin(); option != options.end(); ++option)
        publication.options.insert(Copied(option.key()), Copied(option.value()));
    ZORCmdController::GetController()->Publish(std::move(publication));
}

ZORCmdActionPublisher::~ZORCmdActionPublisher()
{
    ZORCmdController::GetController()->Withdraw(this);
}
