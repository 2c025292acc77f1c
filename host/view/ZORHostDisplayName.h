// Names of objects for people.

#pragma once

#include <QString>

class QObject;

/// Name of what a visual object stands for: the label of a feature where it has one, else the object name,
/// else its class; "unnamed object" for null.
QString ZORHostDisplayName(const QObject* object);
