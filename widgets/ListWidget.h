#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QDialog>
#include <QVariant>

#include <memory>

namespace Widgets {

namespace Ui {
class ListWidget;
}

class ListModel;

// Edits a list of texts in a window of its own, an element a row. Closing hides the window, whoever has
// opened it keeps it. GUI thread.
class ListWidget : public QDialog
{
    Q_OBJECT

public:
    ListWidget(QWidget* parent, const QString& attributeFullPath, const QVariant& attributeValue);
    ~ListWidget() override;

public slots:
    // As if a person had entered it.
    void enter(const QString& entry);

protected:
    void focusOutEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private slots:
    void on_btnCancel_clicked() { close(); }
    void on_btnWrite_clicked();
    void on_btnPlus_clicked();
    void on_btnMinus_clicked();

private:
    void setUpTable();
    void takeTypedElement(); // out of the cell's own editor
    bool getModifiedAttributeValue(QVariant& vValue) const;

    std::unique_ptr<Ui::ListWidget> ui;
    ListModel* model; // a child
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RepositoryInterface> repository;
    QString attributeFullPath;
    QVariant attributeValue;
    qint32 listRowCount = 0; // of the rows as they were counted here; one too many removals make it negative
};

} // namespace Widgets
