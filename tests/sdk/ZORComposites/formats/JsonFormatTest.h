// JSON layup files and what is read from them.

#pragma once

#include "sdk/ZORComposites/CompositesTest.h"

class JsonFormatTest : public CompositesTest
{
protected:
    QList<ZORCompPly*> GetPlies() const { return GetLayup()->GetPlies(); }
    template<class Feature>
    QList<Feature*> GetAll() const
    {
        QList<Feature*> found;
        for (ZORFeatObject* feature : root->GetAllChildren()) {
            if (auto* match = qobject_cast<Feature*>(feature))
                found.append(match);
        }
        return found;
    }
    // A file of these components and whatever else.
    static QByteArray File(const QByteArray& components, const QByteArray& more = {})
    {
        return "{\"allComposite\": [" + components + "]" + (more.isEmpty() ? more : ", " + more) + "}";
    }
    static QByteArray Sequence(const QByteArray& components)
    {
        return R"({"_serialized_type": "X.Sequence", "subComponents": [)" + components + "]}";
    }
    static QByteArray Ply(const QByteArray& more = {})
    {
        return R"({"_serialized_type": "X.Ply")" + (more.isEmpty() ? more : ", " + more) + "}";
    }
    static QByteArray InSequence(const QByteArray& plies, const QByteArray& more = {})
    {
        return File(Sequence(plies), more);
    }
};
