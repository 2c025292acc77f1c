// Private state of a geometry; the container keeps its book-keeping in it.

#pragma once

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoGeometry.h>

#include <QPointer>
#include <QString>

#include <map>

class ZORGeoGeometry::Private
{
public:
    enum class State {
        Unregistered,
        Registered,
        Announced, // still listed, but its removal has been announced
        Removed,
    };
    bool IsListed() const { return state == State::Registered || state == State::Announced; }

    QPointer<ZORGeoContainer> container;
    QString registeredName; // the object name as the container knows it
    qsizetype slot = -1;    // place in the container's index
    int references = 0;
    std::map<const QObject*, int> users; // references by user; compared only, since a user may be gone
    State state = State::Unregistered;
};
