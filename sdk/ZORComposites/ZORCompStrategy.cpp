#include "ZORCompStrategy.h"

#include <ZORGeometry/ZORGeoObjectStorage.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

ZOR_GEO_REGISTER_TYPE(ZORCompStrategy)

class ZORCompStrategy::Private
{
public:
    ZORCompStrategyParameters parameters;
};

ZORCompStrategy::ZORCompStrategy(ZORFeatObject* parent)
    : ZORFeatObject(parent)
    , d(std::make_unique<Private>())
{
    ZOR_TRACE_CALL(parent);
}

ZORCompStrategy::~ZORCompStrategy() = default;

const ZORCompStrategyParameters& ZORCompStrategy::GetParameters() const
{
    return d->parameters;
}

void ZORCompStrategy::SetParameters(const ZORCompStrategyParameters& parameters)
{
    ZOR_TRACE_CALL(parameters);
    parameters.Check();
    if (parameters == d->parameters)
        return;
    d->parameters = parameters;
    ReportChange();
    emit ParametersChanged();
}

struct ZORCompStrategyStorage
{
    static void Write(const ZORCompStrategy& strategy, ZORGeoObjectWriter& writer)
    {
        const ZORCompStrategyParameters& parameters = strategy.d->parameters;
        writer.WriteInt("generators", parameters.generators);
        writer.WriteDouble("step", parameters.step);
        writer.WriteDouble("fibreAngle", parameters.fibreAngle);
        writer.WriteDouble("yarnAngle", parameters.yarnAngle);
        writer.WriteDouble("lockingAngle", parameters.lockingAngle);
        writer.WriteDouble("warpExtent", parameters.warpExtent);
        writer.WriteDouble("weftExtent", parameters.weftExtent);
    }
    static ZORCompStrategy* Create(ZORGeoContainer*, const ZORGeoObjectReader& reader)
    {
        ZORCompStrategyParameters parameters;
        const qint64 generators = reader.GetInt("generators");
        if (generators != ZORCompStrategyParameters::Geodesic
            && generators != ZORCompStrategyParameters::ConstantAngle)
            reader.Fail(ZORCompStrategy::tr("its generators are unknown"));
        parameters.generators = ZORCompStrategyParameters::Generators(generators);
        parameters.step = reader.GetDouble("step");
        parameters.fibreAngle = reader.GetDouble("fibreAngle");
        parameters.yarnAngle = reader.GetDouble("yarnAngle");
        parameters.lockingAngle = reader.GetDouble("lockingAngle");
        parameters.warpExtent = reader.GetDouble("warpExtent");
        parameters.weftExtent = reader.GetDouble("weftExtent");
        try {
            parameters.Check();
        } catch (const ZORSysException& exception) {
            reader.Fail(exception.GetMessage());
        }
        auto strategy = std::make_unique<ZORCompStrategy>(reader.GetReference<ZORFeatObject>("parent"));
        strategy->d->parameters = parameters;
        return strategy.release();
    }
};

ZOR_GEO_REGISTER_STORAGE(ZORCompStrategy)
