// Scene graph of a scene.

#pragma once

#include <QtGlobal>

#include <set>

class ZORVisGlScene
{
public:
    /// The object of this key was added, changed or removed.
    void Touch(quint64 key) { m_touched.insert(key); }

private:
    std::set<quint64> m_touched;
};
