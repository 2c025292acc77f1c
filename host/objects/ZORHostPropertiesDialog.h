// The values of objects in a window.

#pragma once

#include <QDialog>
#include <QList>
#include <QPointer>
#include <QTimer>

class QTreeWidget;
class ZORGeoGeometry;

/// Shows the values of objects while these exist, and follows their changes. Object names: "_PropertiesTree",
/// "_CopyButton".
///
/// Thread safety: main thread only.
class ZORHostPropertiesDialog : public QDialog
{
    Q_OBJECT

public:
    /// \param objects  of one container, not empty, not owned; may be removed
    ZORHostPropertiesDialog(const QList<ZORGeoGeometry*>& objects, QWidget* parent);

private:
    void Fill();
    void Copy() const;

    QList<QPointer<ZORGeoGeometry>> m_objects; // not owned
    QTreeWidget* m_values;
    QTimer m_refresh;
};
