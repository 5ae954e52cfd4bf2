#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QHash>
#include <QIcon>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QSharedPointer>
#include <QTableView>

#include <memory>

namespace Utilities::ModelViews {
class AdvancedAttributeModel;
class AttributeTreeViewModelUtils;
namespace Widgets {
class AttributeTreeModelInputDialogs;
}
} // namespace Utilities::ModelViews

namespace Widgets {
class ListWidget;
}

// The attribute monitor of the browser page: a table of watched attributes, dropped from the tree or loaded
// from a file with a path a line. A value is changed in its cell, by an editor for its type.
class AppConfigDataAccessWidget : public QTableView
{
    Q_OBJECT

public:
    // File dialogs are children of the parent.
    explicit AppConfigDataAccessWidget(QWidget* parent);
    ~AppConfigDataAccessWidget() override;

    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

private slots:
    void onCustomContextMenu(QPoint point);
    void onAttributeUpdateSelected();
    void onSaveSelected();
    void onSaveAsSelected();
    void onLoadSelected();
    void onAttributeDeleteSelected();
    void mouseDoubleClickEvent(QMouseEvent* mouseEvent) override;
    void keyPressEvent(QKeyEvent* event) override;
    void editAttributeBasedOnDataType(QModelIndex selectedIndex, QString attributeFullPath,
                                      QVariant& attributeValue);
    bool getAttributePathAndValue(QModelIndex selectedIndex, QString& attributeFullPath,
                                  QVariant& attributeValue);
    void showListView(QModelIndex selectedIndex, QString attributeFullPath, QVariant& attributeValue);
    void showLineEdit(QModelIndex selectedIndex, QString attributeFullPath, QVariant& attributeValue);
    void showCheckBox(QModelIndex selectedIndex, QString attributeFullPath, QVariant& attributeValue);
    void showDateTimeEdit(QModelIndex selectedIndex, QString attributeFullPath, QVariant& attributeValue);
    void textEditingFinished();

protected:
    bool focusNextPrevChild(bool next) override;
    void scrollContentsBy(int dx, int dy) override;
    void resizeEvent(QResizeEvent* event) override;
    int sizeHintForColumn(int column) const override;

private:
    void setUpView();
    QIcon iconOf(const char* name);
    template <typename Editor>
    void openEditor(const QModelIndex& index, const QString& attributeFullPath,
                    const QVariant& attributeValue);
    void setValueColumnWidth(int width);
    void fitColumns(); // to what they show
    void followChange(const QModelIndex& first, const QModelIndex& last, const QVector<int>& roles);
    bool isLargeDropWanted(int attributes);
    void removeOneByOne(const QList<int>& descendingRows);
    void saveTo(const QString& fileName);

    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RepositoryInterface> repository;
    std::shared_ptr<Utilities::ModelViews::AdvancedAttributeModel> attributeModel; // and a child of this
    QSharedPointer<Utilities::ModelViews::Widgets::AttributeTreeModelInputDialogs> inputDialogs;
    std::shared_ptr<Utilities::ModelViews::AttributeTreeViewModelUtils> treeViewModelUtils;
    QPointer<Widgets::ListWidget> listWidget; // the one opened last; not owned, nobody deletes it
    QString lastProjectFileName;
    QHash<QString, QIcon> icons;      // of the menus, which stay and share them
    int valueColumnWidth = 0;         // pixels; 0 while the column is as wide as what it shows
    QPersistentModelIndex editedCell; // by the newest scalar editor
    QVariant leftValue;               // of its attribute when the edit has ended
};
