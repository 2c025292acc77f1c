// Command that creates courses.

#pragma once

#include "ZORStdDialogCommand.h"

/// Asks for a surface and a centre line on it, a curve or a geodesic from a point in a direction, and for a width, and
/// creates a ZORTPCourse.
class ZORTPCourseCmd final : public ZORStdDialogCommand
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit ZORTPCourseCmd(QObject* parent);

protected:
    ZORStdContent* MakeContent(ZORFeatEnvironment* environment, ZORFeatObject* edited,
                               QWidget* parent) const override;
};
