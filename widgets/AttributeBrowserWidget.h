#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"
#include "host/FrameworkCore/Core/CoreLocalizationInterface.h"
#include "host/Utilities/RefusedEdits.h"
#include "widgets/ExpansionMemory.h"
#include "widgets/HierarchyFilter.h"

#include <QPersistentModelIndex>
#include <QPointer>
#include <QSharedPointer>
#include <QStringList>
#include <QWidget>

#include <memory>

class QComboBox;
class QLabel;
class QMenu;

namespace Utilities::ModelViews {
class AttributeTreeViewModel;
class AttributeTreeViewModelUtils;
} // namespace Utilities::ModelViews

namespace Utilities::ModelViews::Widgets {
class AttributeTreeModelInputDialogs;
}

namespace Widgets {

namespace Ui {
class AttributeBrowserWidget;
}

class AttributeDetails;

// The page that shows the repository as a tree: a search path with completion, four boxes that narrow the
// tree level by level, the details of the clicked attribute or backend, and the attribute monitor. Values are
// edited in their cells, and subtrees are worked on from a menu. It reads the tree when asked to. GUI thread.
class AttributeBrowserWidget : public QWidget
{
    Q_OBJECT

public:
    explicit AttributeBrowserWidget(QWidget* parent = nullptr);
    ~AttributeBrowserWidget() override;

private slots:
    void keyPressEvent(QKeyEvent* event) override;
    void onIndexExpanded(QModelIndex index);
    void onIndexCollapsed(QModelIndex index);
    void onBtnReadAttributeClicked();
    void onTreeItemClicked(QModelIndex clicked);
    void onBtnExportClicked();
    void onBtnImportClicked();
    void onBtnAddValidationClicked();
    void onBtnExpandAllClicked();
    void onBtnCollapseAllClicked();
    void on_edtSearchPath_textChanged(QString arg1);
    void onCustomContextMenu(QPoint point);
    void fillFilterComboBox();
    void on_cbFilter1_currentIndexChanged(int index);
    void on_cbFilter2_currentIndexChanged(int index);
    void on_cbFilter3_currentIndexChanged(int index);
    void on_cbFilter4_currentIndexChanged(int index);
    void applyCustomFilter();
    void showAll();
    void on_newBackendClicked();
    void onBtnNewAttributeClicked();
    void onBtnRenameAttributeClicked();
    void onBtnDeleteAttributeClicked();
    void onBtnCopyAttributeClicked();
    void onBtnPasteAttributeClicked();
    void on_saveBackendClicked();
    void onBtnDeleteBackendClicked();
    void updateBackendPathList();
    bool isSelectedIndexIsBackendRoot(QModelIndex index);
    void onAttributeUpdateSelected();
    void editAttributeBasedOnDataType(QModelIndex selectedIndex, QString attributeFullPath,
                                      QVariant& attributeValue);
    void showListView(QModelIndex selectedIndex, QString attributeFullPath, QVariant& attributeValue);
    void showLineEdit(QModelIndex selectedIndex, QString attributeFullPath, QVariant& attributeValue);
    void showCheckBox(QModelIndex selectedIndex, QString attributeFullPath, QVariant& attributeValue);
    void showDateTimeEdit(QModelIndex selectedIndex, QString attributeFullPath, QVariant& attributeValue);
    void textEditingFinished();
    void refreshAttributesList(QString attributeSearchPath);
    void showAttributeDetails(QModelIndex index);
    void showBackendDetails(QModelIndex index);
    void expandIndexes(QModelIndex parent, QStringList lstExpandedModelPath);
    void expandChildren(QModelIndex index);
    void editAgain(const Utilities::RefusedEdit& refused);
    void collapseChildren(QModelIndex index);
    void expandIndexBasedOnComboText(QString& strText);

protected:
    bool focusNextPrevChild(bool next) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void logValidationNames() const;
    void setUpCompleter();
    void setUpTree();
    void setUpTreeHint();
    void setUpFilters();
    QString pathOf(const QModelIndex& index) const;
    QVariant readValue(const QString& path) const;
    QString readPathSeparator() const;
    void openItem(const QModelIndex& index);
    void reveal(const QString& path);
    void expandBelow(const QModelIndex& index);
    void openBranch(const QModelIndex& index, int& leavesLeft);
    void closeBranch(const QModelIndex& index);
    void postponeTreeLayout(); // or each item that is opened or closed costs a search of all shown rows
    void showSelection();
    void showTreeHint();
    template <typename Editor>
    void showInCell(const QModelIndex& cell, const QString& path, const QVariant& value);
    bool isEditing() const;
    void showDetailsOf(QModelIndex index); // by value: it may be that of detailsIndex
    void followDetails();
    void renewDetails(const QModelIndex& firstChanged, const QModelIndex& lastChanged);
    void fillMenu(QMenu& menu, bool isBackendRoot);
    bool isContextGone() const; // which is logged
    QString goneContextText() const;
    QList<QComboBox*> filterBoxes() const;
    static void fillFilter(QComboBox* box, const QStringList& names, const QString& currentText);
    static void enableFilter(QComboBox* box);

    std::unique_ptr<Ui::AttributeBrowserWidget> ui;
    std::shared_ptr<FrameworkCore::Core::CoreLocalizationInterface> localization;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RepositoryInterface> repository;
    Utilities::ModelViews::AttributeTreeViewModel* treeModel; // owned through its Qt parent, the page
    std::shared_ptr<Utilities::ModelViews::AttributeTreeViewModelUtils> treeUtils;
    QSharedPointer<Utilities::ModelViews::Widgets::AttributeTreeModelInputDialogs> inputDialogs;
    QLabel* treeHint = nullptr; // a child of the tree
    QString shownSearchPath;    // what the tree was read for last
    bool isTreeRead = false;
    QPointer<QWidget> activeEditor;         // over the cell contextIndex, or a window; not owned
    Utilities::RefusedEdit toEditOnceShown; // without a path when there is none
    HierarchyFilter filter;
    AttributeDetails* details; // owned through its Qt parent, the panel

    // Handlers of upper boxes that are running: a lower box that is refilled meanwhile does not filter.
    bool filterOneChanging = false;
    bool filterTwoChanging = false;
    bool filterThreeChanging = false;

    bool copyPending = false;     // a subtree was copied and not pasted yet
    bool contextExpanded = false; // whether the context item was open when the menu came

    bool filtersReady = false; // false while the boxes are filled anew
    QString filterOneText;     // what the boxes showed when the filter was last applied
    QString filterTwoText;
    QString filterThreeText;
    QString filterFourText;

    // One entry for each backend, at the same place in all three.
    QStringList backendRootNames;
    QStringList backendPaths;
    QStringList backendNames;

    QPersistentModelIndex copiedIndex; // the item to paste; when it has gone from the tree, its path serves
    QString copiedPath;
    QPersistentModelIndex contextIndex; // the item that the menu, or the editor, is about
    QString contextPath;                // of the menu's item, to name it when it has left the tree
    QPersistentModelIndex detailsIndex; // the item whose details are shown
    QString detailsPath;                // by which it is found again, should its row go and come
    bool isRemovingRows = false;

    ExpansionMemory expandedPaths;
};

} // namespace Widgets
