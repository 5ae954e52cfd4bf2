#pragma once

#include "host/FrameworkCore/AppConfig/ChangesInterface.h"

#include <QDialog>
#include <QMap>
#include <QVector>

class QPushButton;
class QTreeWidget;
class QVBoxLayout;

namespace Vantry {

// Lets a person choose, attribute by attribute or for all at once, between what was edited here, what is in
// its place now and, for a file that is saved, what both began with. GUI thread.
class ConflictDialog : public QDialog
{
    Q_OBJECT

public:
    using UnsavedChange = FrameworkCore::AppConfig::Interfaces::UnsavedChange;
    using ConflictSide = FrameworkCore::AppConfig::Interfaces::ConflictSide;

    // Saving, where another program has changed the file; or putting kept changes into what is open.
    enum class Purpose { Save, ApplyKept };

    // The conflicts of one backend; the label names it to people.
    ConflictDialog(Purpose purpose, const QString& backend, const QString& label,
                   const QVector<UnsavedChange>& conflicts, QWidget* parent);

    // What was chosen for every path, once the dialog was accepted.
    QMap<QString, ConflictSide> getChoices() const;

private:
    void setUpRows();
    void setUpSides(QVBoxLayout& column);
    void addRows(const QString& backend, const QVector<UnsavedChange>& conflicts);
    void choose(ConflictSide side);
    void showState();

    const Purpose purpose;

    // Children.
    QTreeWidget* rows;
    QVector<QPushButton*> sides; // one for each that is offered
    QPushButton* save = nullptr;
};

} // namespace Vantry
