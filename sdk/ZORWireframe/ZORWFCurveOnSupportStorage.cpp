// How curves on support are saved: all features are links, nothing of them is needed to make the curve.

#include "ZORWFCurveOnSupport.h"

#include <ZORGeometry/ZORGeoObjectStorage.h>

struct ZORWFCurveOnSupportStorage
{
    static void Write(const ZORWFCurveOnSupport& feature, ZORGeoObjectWriter& writer)
    {
        writer.WriteLink("support", feature.GetSupport());
        writer.WriteLink("startPoint", feature.GetStartPoint());
        writer.WriteLink("endPoint", feature.GetEndPoint());
        writer.WriteLink("direction", feature.GetDirection());
        writer.WriteLinks("startLimits", AsGeometries(feature.GetStartLimits()));
        writer.WriteLinks("endLimits", AsGeometries(feature.GetEndLimits()));
        writer.WriteInt("method", feature.GetComputationMethod());
        writer.WriteDouble("startLength", feature.GetStartLength());
        writer.WriteDouble("endLength", feature.GetEndLength());
        writer.WriteDouble("angle", feature.GetAngle());
        writer.WriteBool("isFlipped", feature.IsDirectionFlipped());
    }

    static ZORWFCurveOnSupport* Create(ZORGeoContainer*, const ZORGeoObjectReader& reader)
    {
        return new ZORWFCurveOnSupport(reader.GetReference<ZORFeatObject>("parent"));
    }

    static void Complete(ZORWFCurveOnSupport& feature, const ZORGeoObjectReader& reader)
    {
        feature.SetComputationMethod(ZORWFCurveOnSupport::ComputationMethod(reader.GetInt("method")));
        feature.SetStartLength(reader.GetDouble("startLength"));
        feature.SetEndLength(reader.GetDouble("endLength"));
        feature.SetAngle(reader.GetDouble("angle"));
        feature.SetDirectionFlipped(reader.GetBool("isFlipped"));
        feature.SetSupport(reader.GetLink<ZORFeatGeometry>("support"));
        feature.SetStartPoint(reader.GetLink<ZORFeatGeometry>("startPoint"));
        feature.SetEndPoint(reader.GetLink<ZORFeatGeometry>("endPoint"));
        feature.SetDirection(reader.GetLink<ZORFeatObject>("direction"));
        for (ZORFeatGeometry* limit : reader.GetLinks<ZORFeatGeometry>("startLimits"))
            feature.AddStartLimit(limit);
        for (ZORFeatGeometry* limit : reader.GetLinks<ZORFeatGeometry>("endLimits"))
            feature.AddEndLimit(limit);
    }

private:
    static QList<const ZORGeoGeometry*> AsGeometries(const QList<ZORFeatGeometry*>& features)
    {
        return {features.begin(), features.end()};
    }
};

ZOR_GEO_REGISTER_STORAGE(ZORWFCurveOnSupport)
