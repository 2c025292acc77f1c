#include "window/ZORHostWelcomeView.h"

#include "actions/ZORHostActionIndex.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORGeometry/ZORGeoGeometry.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

#include <QAction>
#include <QApplication>
#include <QGridLayout>
#include <QLabel>
#include <QMenu>
#include <QScrollArea>
#include <QToolButton>

namespace {

constexpr int kColumns = 2;        // of headings
constexpr int kLongestText = 44;   // characters
constexpr double kTitleSize = 1.8; // in sizes of the font of texts

QToolButton* MakeButton(QAction* action, QWidget* parent)
{
    auto* const button = new QToolButton(parent);
    button->setObjectName(QLatin1String("_Welcome") + action->objectName());
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::StrongFocus);
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setIcon(action->icon());
    QString text = ZORHostPlainText(action->text());
    button->setAccessibleName(text);
    if (text.size() > kLongestText)
        text = text.left(kLongestText / 2) + QChar(0x2026) + text.right(kLongestText / 2);
    button->setText(text.replace(u'&', QLatin1String("&&")));
    button->setToolTip(action->toolTip());
    button->setStatusTip(action->statusTip());
    // Queued: the action may refill the menu that it belongs to, and with it this part of the welcome.
    QObject::connect(button, &QToolButton::clicked, action, &QAction::trigger, Qt::QueuedConnection);
    return button;
}

void Scale(QLabel* label, double factor)
{
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * factor);
    font.setBold(true);
    label->setFont(font);
}

} // namespace

ZORHostWelcomeView::ZORHostWelcomeView(QWidget* covered, QWidget* parent)
    : QFrame(parent)
    , m_covered(covered)
{
    setObjectName("_WelcomeView");
    setProperty("helpTopic", tr("First steps"));
    setAutoFillBackground(true);
    auto* const whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    auto* const scroller = new QScrollArea(this); // for small screens
    scroller->setObjectName("_WelcomeScroller");
    scroller->setFrameShape(QFrame::NoFrame);
    scroller->setFocusPolicy(Qt::NoFocus);
    scroller->setWidgetResizable(true);
    whole->addWidget(scroller);
    auto* const page = new QWidget(scroller);
    page->setObjectName("_WelcomePage");
    scroller->setWidget(page);
    auto* const column = new QVBoxLayout(page);
    column->setContentsMargins(32, 24, 32, 24);
    auto* const title = new QLabel(tr("Welcome"), page);
    title->setObjectName("_WelcomeTitleLbl");
    Scale(title, kTitleSize);
    column->addWidget(title);
    auto* const hint = new QLabel(tr("The document is empty. Open a file, or drop one here."), page);
    hint->setObjectName("_WelcomeHintLbl");
    hint->setWordWrap(true);
    column->addWidget(hint);
    column->addSpacing(12);
    m_parts = new QGridLayout;
    m_parts->setHorizontalSpacing(40);
    m_parts->setVerticalSpacing(20);
    column->addLayout(m_parts);
    column->addStretch();
    m_showTimer.setSingleShot(true);
    m_showTimer.setInterval(0);
    connect(&m_showTimer, &QTimer::timeout, this, [this] { setVisible(IsEmpty()); });
}

QVBoxLayout* ZORHostWelcomeView::AddColumn(const QString& heading)
{
    auto* const column = new QVBoxLayout;
    column->setSpacing(2);
    auto* const label = new QLabel(heading, m_parts->parentWidget());
    Scale(label, 1);
    column->addWidget(label);
    const int index = m_parts->count();
    m_parts->addLayout(column, index / kColumns, index % kColumns, Qt::AlignTop | Qt::AlignLeft);
    m_parts->setColumnStretch(kColumns, 1);
    return column;
}

void ZORHostWelcomeView::AddActions(const QString& heading, const QList<QAction*>& actions)
{
    QVBoxLayout* const column = AddColumn(heading);
    for (QAction* action : actions)
        column->addWidget(MakeButton(action, m_parts->parentWidget()));
}

void ZORHostWelcomeView::AddMenu(const QString& heading, QMenu* menu, int most)
{
    m_menus.append({menu, AddColumn(heading), most});
    FillMenus();
}

void ZORHostWelcomeView::FillMenus()
{
    for (const MenuPart& part : std::as_const(m_menus)) {
        while (QLayoutItem* item = part.column->takeAt(1)) { // behind the heading
            item->widget()->hide();
            item->widget()->deleteLater();
            delete item;
        }
        emit part.menu->aboutToShow(); // which brings it up to date
        const QList<QAction*> actions = part.menu->actions();
        for (QAction* action : actions) {
            if (action->isSeparator() || part.column->count() > part.most)
                break;
            if (action->isEnabled())
                part.column->addWidget(MakeButton(action, m_parts->parentWidget()));
            else
                part.column->addWidget(new QLabel(ZORHostPlainText(action->text()), m_parts->parentWidget()));
        }
    }
}

void ZORHostWelcomeView::SetEnvironment(ZORFeatEnvironment* environment)
{
    for (const QMetaObject::Connection& connection : std::as_const(m_connections))
        disconnect(connection);
    m_connections.clear();
    m_environment = environment;
    if (environment) {
        m_connections = {
            connect(environment->GetContainer(), &ZORGeoContainer::GeometryAdded, this, &QWidget::hide),
            connect(environment, &ZORVisEnvironment::ObjectAdded, this, &QWidget::hide),
            connect(environment->GetContainer(), &ZORGeoContainer::GeometryRemoved, &m_showTimer,
                    qOverload<>(&QTimer::start)),
            connect(environment, &ZORVisEnvironment::ObjectRemoved, &m_showTimer,
                    qOverload<>(&QTimer::start))};
    }
    setVisible(IsEmpty());
}

bool ZORHostWelcomeView::IsEmpty() const
{
    return !m_environment
           || (m_environment->GetContainer()->GetNumGeometry() == 0
               && m_environment->GetNumVirtualObjects() == 0);
}

void ZORHostWelcomeView::showEvent(QShowEvent* event)
{
    raise();
    FillMenus();
    if (window()->focusWidget() == m_covered) {
        if (auto* const first = findChild<QToolButton*>())
            first->setFocus();
    }
    QFrame::showEvent(event);
}

void ZORHostWelcomeView::hideEvent(QHideEvent* event)
{
    if (const QWidget* focus = QApplication::focusWidget(); focus && isAncestorOf(focus))
        m_covered->setFocus();
    QFrame::hideEvent(event);
}
