#include "import/FileDropImport.h"

#include "import/QuoteBatchImportHelper.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QWidget>

namespace {

QStringList localFiles(const QMimeData* data)
{
    QStringList files;
    if (data == nullptr)
        return files;
    for (const QUrl& url : data->urls()) {
        if (url.isLocalFile())
            files << url.toLocalFile();
    }
    return files;
}

class FileDropFilter : public QObject
{
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        switch (event->type()) {
        case QEvent::DragEnter:
        case QEvent::DragMove: {
            auto* drag = static_cast<QDragMoveEvent*>(event);
            if (localFiles(drag->mimeData()).isEmpty())
                return false;
            drag->acceptProposedAction();
            return true;
        }
        case QEvent::Drop: {
            auto* drop = static_cast<QDropEvent*>(event);
            const QStringList files = localFiles(drop->mimeData());
            if (files.isEmpty())
                return false;
            drop->acceptProposedAction();
            QBQuoteBatchImportHelper::importFiles(files);
            return true;
        }
        default:
            return QObject::eventFilter(watched, event);
        }
    }
};

} // namespace

void installFileDropImport(QWidget* window)
{
    window->setAcceptDrops(true);
    window->installEventFilter(new FileDropFilter(window));
}
