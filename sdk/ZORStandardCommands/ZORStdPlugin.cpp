#include "ZORStdPlugin.h"

#include "ZORCompLayupCmd.h"
#include "ZORCompMaterialLibraryCmd.h"
#include "ZORCompRosetteCmd.h"
#include "ZORCompStrategyCmd.h"
#include "ZORTPCourseCmd.h"
#include "ZORWFDrawCmd.h"
#include "ZORWFProjectionCmd.h"

#include <ZORCommand/ZORCmdActionPublisher.h>
#include <ZORCommand/ZORCmdController.h>
#include <ZORSystem/ZORSysMetaTypeCleanup.h>

#include <QVariantMap>

#include <list>

// Not in a namespace: so the macro wants it.
static void InitResources()
{
    Q_INIT_RESOURCE(standardcommands);
}

namespace {

/// The actions of the library, in one place: applications show categories in the order of publication, which is
/// an accident between static objects of different files.
class Actions
{
public:
    Actions()
    {
        InitResources(); // applications look for the icons at once
        const char* const composites = "Composites";
        Publish<ZORCompLayupCmd>(composites, "Create", "layup", ZORCompLayupCmd::tr("Create Layup"),
                                 ZORCompLayupCmd::tr("Creates a layup of plies on a surface"),
                                 {QString::fromLatin1("ZORCompLayup")});
        Publish<ZORCompMaterialLibraryCmd>(
            composites, "Edit", "material-library", ZORCompMaterialLibraryCmd::tr("Material Library"),
            ZORCompMaterialLibraryCmd::tr("Edits the materials that plies are made of"),
            {QString::fromLatin1("ZORCompMaterial"), QString::fromLatin1("ZORCompMaterialLibrary")});
        Publish<ZORCompRosetteCmd>(
            composites, "Create", "rosette", ZORCompRosetteCmd::tr("Create Rosette"),
            ZORCompRosetteCmd::tr("Creates an axis system from which fibre angles are measured"),
            {QString::fromLatin1("ZORCompRosette")});
        Publish<ZORCompStrategyCmd>(composites, "Create", "strategy",
                                    ZORCompStrategyCmd::tr("Create Draping Strategy"),
                                    ZORCompStrategyCmd::tr("Creates a strategy by which layers are draped"),
                                    {QString::fromLatin1("ZORCompStrategy")});
        Publish<ZORWFProjectionCmd>(
            "Wireframe", "Create", "projection", ZORWFProjectionCmd::tr("Create Projection"),
            ZORWFProjectionCmd::tr("Projects a point or a curve onto a surface and follows them"),
            {QString::fromLatin1("ZORWFProjection")});
        const char* const wireframe = "Wireframe";
        Publish<ZORWFDrawCmd>(wireframe, "CreatePoints", "point", ZORWFDrawCmd::tr("Create Points"),
                              ZORWFDrawCmd::tr("Creates points where you click on surfaces"), {});
        Publish<ZORWFDrawCmd>(wireframe, "CreateLine", "line", ZORWFDrawCmd::tr("Create Line"),
                              ZORWFDrawCmd::tr("Creates a line over a surface between two clicks"), {});
        Publish<ZORWFDrawCmd>(wireframe, "CreatePolyline", "polyline", ZORWFDrawCmd::tr("Create Polyline"),
                              ZORWFDrawCmd::tr("Creates a line over a surface through several clicks"), {});
        Publish<ZORTPCourseCmd>(
            "Tool Path", "Create", "course", ZORTPCourseCmd::tr("Create Course"),
            ZORTPCourseCmd::tr("Creates a course of a fibre placement machine on a surface"),
            {QString::fromLatin1("ZORTPCourse")});
    }

private:
    // The strings are allocated: literals vanish with the library.
    template<class Command>
    void Publish(const char* category, const char* method, const char* icon, const QString& text,
                 const QString& toolTip, const QStringList& edits)
    {
        const QMetaObject* const command = &Command::staticMetaObject;
        ZORCmdController::GetController()->RegisterCommand(command);
        m_publishers.emplace_back(QString::fromLatin1(category), command, QString::fromLatin1(icon), text,
                                  toolTip, int(m_publishers.size()), ZORCmdActionPublisher::MenuOnly,
                                  QVariantMap{{QString::fromLatin1("method"), QString::fromLatin1(method)},
                                              {QString::fromLatin1("edits"), edits}});
    }

    std::list<ZORCmdActionPublisher> m_publishers;
};

const ZORSysMetaTypeCleanup kMetaTypeCleanup(&ZORStdPlugin::staticMetaObject);
const Actions kActions;

} // namespace
