// Layups in files.

#pragma once

#include "CompositesTest.h"

class ReaderTest : public CompositesTest
{
protected:
    // A layup of one ply of one material.
    static QByteArray File(double thickness)
    {
        return R"(<layups version="1" length="mm" angle="deg" stress="MPa" density="t/mm3" permeability="m2">
            <materials><material id="m" name="Twill" thickness=")"
               + QByteArray::number(thickness) + R"("/></materials>
            <layup name="L"><sequence><ply material="m" angle="45"/></sequence></layup></layups>)";
    }
    int CountLayups() const
    {
        int count = 0;
        for (ZORFeatObject* feature : root->GetAllChildren())
            count += qobject_cast<ZORCompLayup*>(feature) ? 1 : 0;
        return count;
    }
};
