#include "fuzz/Exercises.h"
#include "fuzz/program/ScratchFolder.h"
#include "host/FrameworkCore/Values/VariantText.h"
#include "host/Utilities/ModelViews/AdvancedAttributeModel.h"
#include "host/Utilities/ModelViews/AttributeTreeViewModelUtils.h"
#include "host/Utilities/RepositoryAccess.h"
#include "repository/AttributeRepository.h"

#include <QCoreApplication>
#include <QMimeData>
#include <QSet>
#include <QTextCodec>

namespace Fuzz {

using FrameworkCore::Values::decodeUtf8;
using Repository::AttributeRepository;
using Utilities::ModelViews::AdvancedAttributeModel;
using Utilities::ModelViews::AttributeTreeViewModelUtils;

namespace {

constexpr int mostAttributes = 8;
constexpr int mostRowsShown = 24;

class MonitorListExercise
{
public:
    explicit MonitorListExercise(std::string_view input) : bytes(input.data(), int(input.size())) {}

    std::string run()
    {
        ScratchFolder::instance().clear();
        ScratchFolder::instance().write(fileName, bytes);
        const QString before = QStringLiteral("before");
        QString content = before;
        QString error;
        const bool isRead = utils.readTextFile(ScratchFolder::instance().path(fileName), content, error);
        if (isRead != isText())
            return "a list is read although it is not text, or the reverse: " + error.toStdString();
        QString broken;
        if (!isRead && (content != before || !error.contains(fileName)))
            broken = QStringLiteral("a refusal changes the text, or does not name the file: ") + error;
        else if (isRead)
            broken = checkList(content);
        return broken.toStdString();
    }

private:
    bool isText() const
    {
        QTextCodec::ConverterState state;
        QTextCodec::codecForName("UTF-8")->toUnicode(bytes.constData(), bytes.size(), &state);
        return state.invalidChars == 0 && state.remainingChars == 0 && !bytes.contains('\0');
    }

    // The reference: lines of bytes, without what is not part of a path.
    QStringList expectedPaths() const
    {
        QStringList paths;
        QByteArray rest = bytes;
        if (rest.startsWith("\xEF\xBB\xBF"))
            rest.remove(0, 3);
        for (QByteArray line : rest.split('\n')) {
            while (line.endsWith('\r'))
                line.chop(1);
            if (!line.isEmpty())
                paths.append(decodeUtf8({line.constData(), std::size_t(line.size())}));
        }
        return paths;
    }

    QString checkList(const QString& content)
    {
        const auto repository = AttributeRepository::create({false});
        Utilities::SetAppConfigRepositoryInterface(repository);
        const QStringList paths = expectedPaths();
        for (const QString& path : paths.mid(0, mostAttributes))
            repository->getWriterInterface()->createAttribute(path, path.size(), 2, 3);
        AdvancedAttributeModel model;
        model.loadCustomAttributeList(content.split(QLatin1Char('\n')));
        if (model.getAttributeFullPathList() != paths)
            return QStringLiteral("the list is loaded as\n") +
                   model.getAttributeFullPathList().join(QLatin1Char('\n'));
        QString broken = checkCells(model, *repository);
        if (broken.isEmpty())
            broken = checkSaved(model);
        if (broken.isEmpty())
            broken = checkDrop(content);
        Utilities::SetAppConfigRepositoryInterface(nullptr);
        return broken;
    }

    static QString checkCells(AdvancedAttributeModel& model, AttributeRepository& repository)
    {
        const QStringList paths = model.getAttributeFullPathList();
        for (int row = 0; row < std::min(model.rowCount(), mostRowsShown); ++row) {
            for (int column = 0; column < AdvancedAttributeModel::ColumnCount; ++column) {
                for (int role = Qt::DisplayRole; role <= Qt::AccessibleDescriptionRole; ++role)
                    model.index(row, column).data(role);
            }
            const QVariant shown = model.index(row, AdvancedAttributeModel::ValueColumn).data(Qt::EditRole);
            const auto attribute = repository.getReaderInterface()->getAttribute(paths.at(row));
            if (shown != (attribute ? attribute->getValue() : QVariant()))
                return QStringLiteral("row %1 shows '%2'").arg(row).arg(shown.toString());
            if (model.index(row, AdvancedAttributeModel::PathColumn).data().toString() != paths.at(row))
                return QStringLiteral("row %1 shows another path").arg(row);
        }
        for (const QString& path : paths.mid(0, mostAttributes))
            repository.getWriterInterface()->writeAttributeValue(path, -1, 15);
        QCoreApplication::sendPostedEvents();
        return {};
    }

    QString checkSaved(const AdvancedAttributeModel& model) const
    {
        const QStringList paths = model.getAttributeFullPathList();
        if (!utils.writeTxtFile(paths.join(QLatin1Char('\n')), ScratchFolder::instance().path(fileName)))
            return QStringLiteral("the list cannot be saved");
        QString content;
        QString error;
        if (!utils.readTextFile(ScratchFolder::instance().path(fileName), content, error))
            return error;
        AdvancedAttributeModel again;
        again.loadCustomAttributeList(content.split(QLatin1Char('\n')));
        if (again.getAttributeFullPathList() != paths)
            return QStringLiteral("saved and loaded, the list is\n") +
                   again.getAttributeFullPathList().join(QLatin1Char('\n'));
        return {};
    }

    // The same text, dropped from another program.
    static QString checkDrop(const QString& content)
    {
        AdvancedAttributeModel model;
        QMimeData data;
        data.setText(content);
        model.dropMimeData(&data, Qt::CopyAction, -1, -1, {});
        const QStringList dropped = model.getAttributeFullPathList();
        if (QSet<QString>(dropped.begin(), dropped.end()).size() != dropped.size())
            return QStringLiteral("a drop adds a path twice");
        for (const QString& path : dropped) {
            if (path.isEmpty() || path.contains(QLatin1Char('\n')))
                return QStringLiteral("a drop adds '%1'").arg(path);
        }
        return {};
    }

    const QByteArray bytes;
    const QString fileName = QStringLiteral("list.dap");
    AttributeTreeViewModelUtils utils;
};

} // namespace

std::string exerciseMonitorLists(std::string_view input)
{
    return MonitorListExercise(input).run();
}

} // namespace Fuzz
