#include "ZORStdDialogCommand.h"

#include "ZORStdContent.h"

#include <ZORCommand/ZORCmdProgress.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORFeature/ZORFeatEnvironmentManager.h>
#include <ZORFeature/ZORFeatObject.h>
#include <ZORFeature/ZORFeatStyles.h>
#include <ZORSystem/ZORSysException.h>

ZORStdDialogCommand::ZORStdDialogCommand(QObject* parent, const QString& editTitle)
    : ZORCmdDialogCommand(parent, Dialog, OneStep)
    , m_editTitle(editTitle)
{
}

ZORFeatObject* ZORStdDialogCommand::GetEditedFeature() const
{
    return qobject_cast<ZORFeatObject*>(GetEditedObject());
}

void ZORStdDialogCommand::Start()
{
    m_environment = ZORFeatEnvironmentManager::GetManager()->GetCurrentEnvironment();
    if (!m_environment)
        throw ZORSysException(tr("there is no current environment"));
    if (const ZORFeatObject* const edited = GetEditedFeature()) {
        if (edited->GetContainer() != m_environment->GetContainer())
            throw ZORSysException(tr("the object is not in the current document"));
        m_helpTopic = GetTitle();
        if (!m_editTitle.isEmpty())
            SetTitle(m_editTitle);
    }
    connect(m_environment, &ZORFeatEnvironment::AboutToBeDestroyed, this, [this] {
        delete GetContentWidget(); // it looks at the container
        Reject();
    });
    ZORCmdDialogCommand::Start();
}

QWidget* ZORStdDialogCommand::CreateContent(QWidget* parent)
{
    ZORStdContent* const content = MakeContent(m_environment, GetEditedFeature(), parent);
    if (!m_helpTopic.isEmpty())
        content->setProperty("helpTopic", m_helpTopic); // the same page as for creating
    connect(content, &ZORStdContent::ProblemChanged, this, &ZORStdDialogCommand::SetProblem);
    SetProblem(content->GetProblem());
    return content;
}

void ZORStdDialogCommand::Commit()
{
    auto* const content = static_cast<ZORStdContent*>(GetContentWidget());
    // OK by its shortcut leaves the editor of a table cell open, which takes over its text when it loses the focus.
    if (QWidget* const editor = content->focusWidget())
        editor->clearFocus();
    content->Check(); // an object may have gone since
    if (!content->GetProblem().isEmpty())
        throw ZORSysException(content->GetProblem());
    const ZORFeatShowNew show(m_environment->GetContainer());
    // A feature that others are computed from keeps its new values even if these computations are given up.
    const ZORCmdProgress progress(content->window(), tr("Computing..."),
                                  GetEditedFeature() ? ZORCmdProgress::CannotCancel
                                                     : ZORCmdProgress::CanCancel);
    content->Apply();
}
