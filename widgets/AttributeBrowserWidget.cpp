#include "widgets/AttributeBrowserWidget.h"

#include "app/VantryLog.h"
#include "host/Shared/Completer/TreeModelCompleter.h"
#include "host/Utilities/LocalizationAccess.h"
#include "host/Utilities/ModelViews/AttributeModel.h"
#include "host/Utilities/ModelViews/AttributeTreeViewModel.h"
#include "host/Utilities/ModelViews/AttributeTreeViewModelUtils.h"
#include "host/Utilities/ModelViews/Widgets/AttributeNameDelegate.h"
#include "host/Utilities/ModelViews/Widgets/AttributeTreeModelInputDialogs.h"
#include "host/Utilities/ModelViews/Widgets/LongTextDelegate.h"
#include "host/Utilities/ModelViews/Widgets/PlainLabel.h"
#include "host/Utilities/RepositoryAccess.h"
#include "host/Utilities/ScopedSignalBlocker.h"
#include "ui_AttributeBrowserWidget.h"
#include "widgets/AttributeDetails.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QListView>
#include <QScrollBar>
#include <QStringListModel>
#include <QVBoxLayout>

namespace Widgets {

using Shared::Completer::TreeModelCompleter;
using Utilities::ModelViews::AttributeModel;
using Utilities::ModelViews::AttributeTreeViewModel;
using Utilities::ModelViews::AttributeTreeViewModelUtils;
using Utilities::ModelViews::Widgets::AttributeNameDelegate;
using Utilities::ModelViews::Widgets::AttributeTreeModelInputDialogs;
using Utilities::ModelViews::Widgets::LongTextDelegate;
using Utilities::ModelViews::Widgets::PlainLabel;

AttributeBrowserWidget::AttributeBrowserWidget(QWidget* parent)
    : QWidget(parent), ui(std::make_unique<Ui::AttributeBrowserWidget>()),
      localization(Utilities::GetLocalizationInterface()),
      repository(Utilities::GetAppConfigRepositoryInterface()), treeModel(new AttributeTreeViewModel(this)),
      treeUtils(std::make_shared<AttributeTreeViewModelUtils>()),
      inputDialogs(QSharedPointer<AttributeTreeModelInputDialogs>::create(parent)), filter(repository)
{
    ui->setupUi(this);
    logValidationNames();
    setUpCompleter();
    setUpTree();
    connect(ui->btnReadAttribute, &QPushButton::clicked, this,
            &AttributeBrowserWidget::onBtnReadAttributeClicked);
    ui->txtAttributeDetails->setAutoFormatting(QTextEdit::AutoAll);
    ui->txtAttributeDetails->setAcceptRichText(true);
    ui->txtAttributeDetails->setLineWrapMode(QTextEdit::WidgetWidth);
    details = new AttributeDetails(*ui->txtAttributeDetails);
    setUpFilters();
    connect(&Utilities::RefusedEdits::instance(), &Utilities::RefusedEdits::editRequested, this,
            &AttributeBrowserWidget::editAgain);
    connect(treeModel, &AttributeTreeViewModel::showAllRequested, this, &AttributeBrowserWidget::showAll);
}

AttributeBrowserWidget::~AttributeBrowserWidget()
{
    if (activeEditor && activeEditor->isWindow()) // closing it would give its edit up
        activeEditor.clear();
    textEditingFinished(); // an editor that is still open would call a page that is half gone
}

void AttributeBrowserWidget::logValidationNames() const
{
    const auto validations = repository ? repository->getValidationInterface() : nullptr;
    Vantry::logLine(Shared::Logging::LogMessageType::Information)
        << "AttributeBrowserWidget::AttributeBrowserWidget() registered validation names: "
        << (validations ? validations->getValidationNames() : QStringList());
}

void AttributeBrowserWidget::setUpCompleter()
{
    ui->edtSearchPath->setCompleter(
        new TreeModelCompleter(nullptr, ui->edtSearchPath, readPathSeparator(), Qt::CaseInsensitive));
    ui->edtSearchPath->keepInSight(ui->btnReadAttribute);
    connect(ui->edtSearchPath, &QLineEdit::returnPressed, ui->btnReadAttribute, &QPushButton::click);
}

void AttributeBrowserWidget::setUpTree()
{
    QTreeView* const tree = ui->treeView;
    tree->setSelectionMode(QAbstractItemView::SingleSelection);
    tree->setDragEnabled(true);
    tree->setDropIndicatorShown(true);
    tree->setAcceptDrops(true);
    tree->setAutoExpandDelay(2000);
    tree->setContextMenuPolicy(Qt::CustomContextMenu);
    tree->installEventFilter(this);
    tree->setUniformRowHeights(true); // or to reach the last of a million rows, all of them are measured
    tree->header()->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    tree->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    tree->header()->setStretchLastSection(false);
    tree->header()->setResizeContentsPrecision(100); // rows, of which some are out of sight
    tree->setItemDelegate(new LongTextDelegate(tree));
    tree->setItemDelegateForColumn(AttributeTreeViewModel::NameColumn, new AttributeNameDelegate(tree));
    // The columns are as wide as the rows in sight ask for, and scrolling brings others into sight. This is
    // the public way to have them measured anew once control returns to the event loop.
    connect(tree->verticalScrollBar(), &QScrollBar::valueChanged, tree->header(),
            [header = tree->header()] { header->setSectionResizeMode(QHeaderView::ResizeToContents); });
    connect(tree, &QTreeView::customContextMenuRequested, this, &AttributeBrowserWidget::onCustomContextMenu);
    connect(tree, SIGNAL(doubleClicked(const QModelIndex&)), this, SLOT(onAttributeUpdateSelected()));
    connect(tree, &QTreeView::clicked, this, &AttributeBrowserWidget::onTreeItemClicked);
    connect(tree, &QTreeView::expanded, this, &AttributeBrowserWidget::onIndexExpanded);
    connect(tree, &QTreeView::collapsed, this, &AttributeBrowserWidget::onIndexCollapsed);
    connect(treeModel, &AttributeTreeViewModel::refreshAttributeTree, this,
            &AttributeBrowserWidget::onBtnReadAttributeClicked);
    connect(treeModel, &QAbstractItemModel::dataChanged, this, &AttributeBrowserWidget::renewDetails);
    // Before the tree hears of it, and selects another row in place of one that goes.
    connect(treeModel, &QAbstractItemModel::rowsAboutToBeRemoved, this, [this] { isRemovingRows = true; });
    tree->setModel(treeModel);
    connect(treeModel, &QAbstractItemModel::rowsRemoved, this, [this] { isRemovingRows = false; });
    connect(treeModel, &QAbstractItemModel::rowsRemoved, this, &AttributeBrowserWidget::followDetails,
            Qt::QueuedConnection); // a row that moves comes again at once
    connect(tree->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &AttributeBrowserWidget::showSelection);
    setUpTreeHint();
}

void AttributeBrowserWidget::setUpTreeHint()
{
    treeHint = new PlainLabel(ui->treeView->viewport());
    treeHint->setObjectName(QString::fromLatin1("lblTreeHint"));
    treeHint->setWordWrap(true);
    treeHint->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    treeHint->setForegroundRole(QPalette::Text);
    treeHint->setAttribute(Qt::WA_TransparentForMouseEvents);
    treeHint->hide();
    auto* const layout = new QVBoxLayout(ui->treeView->viewport());
    layout->addWidget(treeHint, 0, Qt::AlignTop);
    for (const auto change : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
        connect(treeModel, change, this, &AttributeBrowserWidget::showTreeHint);
    connect(treeModel, &QAbstractItemModel::modelReset, this, &AttributeBrowserWidget::showTreeHint);
}

void AttributeBrowserWidget::setUpFilters()
{
    for (QComboBox* const box : filterBoxes()) {
        // A box may hold a million names: it must not be measured by them, nor its list row by row, as a list
        // is that opens over its box.
        box->setModel(new QStringListModel(box));
        box->setItemDelegate(new LongTextDelegate(box, Qt::ElideMiddle));
        box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        box->setMinimumContentsLength(6);
        box->setStyleSheet(QString::fromLatin1("QComboBox { combobox-popup: 0; }"));
        qobject_cast<QListView*>(box->view())->setUniformItemSizes(true);
        box->view()->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded); // which the style has put off
        box->setEnabled(false);
    }
}

QString AttributeBrowserWidget::pathOf(const QModelIndex& index) const
{
    return treeUtils->retriveAttributePathFromIndex(index);
}

QVariant AttributeBrowserWidget::readValue(const QString& path) const
{
    QVariant value;
    if (const auto reader = repository ? repository->getReaderInterface() : nullptr)
        reader->readAttributeValue(path, value, 0);
    return value;
}

QString AttributeBrowserWidget::readPathSeparator() const
{
    const auto reader = repository ? repository->getReaderInterface() : nullptr;
    if (!reader)
        return {};
    const auto attribute = reader->getAttribute(
        repository->buildAttributePath({QString::fromLatin1("internal"), QString::fromLatin1("repository"),
                                        QString::fromLatin1("path_separator")}));
    return attribute ? attribute->getValue().toString() : QString();
}

void AttributeBrowserWidget::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_A && event->modifiers() == Qt::ControlModifier)
        ui->treeView->selectAll();
    else if (event->key() == Qt::Key_F2)
        onAttributeUpdateSelected();
}

void AttributeBrowserWidget::onBtnReadAttributeClicked()
{
    refreshAttributesList(ui->edtSearchPath->text());
    const QStringList openPaths = expandedPaths.toList();
    expandedPaths.clear();
    expandIndexes(treeModel->index(0, 0), openPaths);
    filtersReady = false;
    for (QComboBox* const box : filterBoxes())
        box->setEnabled(false);
    fillFilterComboBox();
    filtersReady = true;
}

void AttributeBrowserWidget::refreshAttributesList(QString attributeSearchPath)
{
    if (!repository)
        return;
    treeModel->resetModel(attributeSearchPath);
    shownSearchPath = attributeSearchPath;
    isTreeRead = true;
    showTreeHint();
    updateBackendPathList();
    followDetails();
    localization->loadTranslations(QLocale(QLocale::German, QLocale::AnyCountry));
}

void AttributeBrowserWidget::updateBackendPathList()
{
    backendRootNames.clear();
    backendPaths.clear();
    backendNames.clear();
    if (repository) {
        const QString namesPath = repository->buildAttributePath(
            {QString::fromLatin1("internal"), QString::fromLatin1("backends"), QString::fromLatin1("names")});
        const QVariant names = readValue(namesPath);
        if (names.isValid())
            backendNames = names.toString().split(QLatin1Char(';'));
        for (const QString& name : qAsConst(backendNames)) {
            const QString path = readValue(repository->buildAttributePath({namesPath, name})).toString();
            backendPaths.append(path);
            backendRootNames.append(path.split(QLatin1Char('.')).last());
        }
    }
    treeModel->setLstBackendName(backendRootNames);
    treeModel->setLstBackendPath(backendPaths);
}

void AttributeBrowserWidget::on_edtSearchPath_textChanged(QString arg1)
{
    if (!ui->chkAutoCompletion->isChecked()) {
        ui->edtSearchPath->refreshCompleterModel(nullptr);
        return;
    }
    const Utilities::ScopedSignalBlocker blocker(ui->edtSearchPath);
    if (arg1.isEmpty())
        return;
    if (!arg1.endsWith(QLatin1Char('*')))
        arg1 += QLatin1Char('*');
    ui->edtSearchPath->refreshCompleterModel(new AttributeModel(arg1, this, repository));
}

void AttributeBrowserWidget::onBtnRenameAttributeClicked()
{
}

void AttributeBrowserWidget::onBtnDeleteBackendClicked()
{
}

} // namespace Widgets
