// A window that one drags files out of: the files are the arguments of the program.

#include <QApplication>
#include <QDrag>
#include <QLabel>
#include <QMimeData>
#include <QMouseEvent>
#include <QUrl>

namespace {

class DragSource : public QLabel
{
public:
    explicit DragSource(const QStringList& files)
    {
        for (const QString& file : files)
            m_urls.append(QUrl::fromLocalFile(file));
        setObjectName("DragSource");
        setText("drag me");
        setAlignment(Qt::AlignCenter);
    }

protected:
    void mousePressEvent(QMouseEvent* event) override { m_start = event->position().toPoint(); }
    void mouseMoveEvent(QMouseEvent* event) override
    {
        const int distance = (event->position().toPoint() - m_start).manhattanLength();
        if (distance < QApplication::startDragDistance())
            return;
        auto* files = new QMimeData;
        files->setUrls(m_urls);
        auto* drag = new QDrag(this);
        drag->setMimeData(files);
        const Qt::DropAction action = drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::CopyAction);
        setText(QLatin1String(action == Qt::IgnoreAction ? "refused" : "taken"));
    }

private:
    QList<QUrl> m_urls;
    QPoint m_start;
};

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    DragSource source(QApplication::arguments().mid(1));
    source.setWindowFlag(Qt::WindowStaysOnTopHint);
    source.resize(90, 50);
    source.move(0, 0);
    source.show();
    return QApplication::exec();
}
