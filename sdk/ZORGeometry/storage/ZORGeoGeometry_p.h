// Private state of a geometry; the container keeps its book-keeping in it.

#pragma once

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoGeometry.h>

#include <QPointer>
#include <QString>

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
    State state = State::Unregistered;
};
