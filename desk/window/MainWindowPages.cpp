#include "desk/common/FlatButtons.h"
#include "desk/files/FileMenu.h"
#include "desk/window/MainWindow.h"
#include "desk/window/NavigationArea.h"
#include "desk/window/StartPage.h"
#include "desk/window/WindowMemory.h"

#include <QStackedWidget>

#include <algorithm>
#include <utility>

namespace Vantry {

const QLatin1String attributesPage("attributes");

void MainWindow::showPage(const QString& identification, const QString& page)
{
    for (const auto& application : applications.getApplications()) {
        if (application.control && application.identification == identification)
            FlatButtons::markPage(*application.control, page);
    }
    showApplication(identification);
}

void MainWindow::showApplication(const QString& identification)
{
    for (const auto& application : applications.getApplications()) {
        if (application.main && application.identification == identification)
            workArea->setCurrentWidget(application.main);
    }
    noteShownApplication();
}

// Marks in the navigation area what the work area shows, and tells the applications.
void MainWindow::noteShownApplication()
{
    const QString before = std::exchange(shownApplication, {});
    for (const auto& application : applications.getApplications()) {
        if (!application.main)
            continue;
        const bool isShown = application.main == workArea->currentWidget();
        if (isShown)
            shownApplication = application.identification;
        if (application.control)
            FlatButtons::markPage(*application.control,
                                  isShown ? applications.getPage(application.identification) : QString());
    }
    navigation->markApplication(shownApplication);
    if (shownApplication == before)
        return;
    const QString shown = shownApplication;
    applications.tell(before, ApplicationHost::Event::Hidden);
    applications.tell(shown, ApplicationHost::Event::Shown);
}

// By its heading or key.
void MainWindow::chooseApplication(const QString& identification)
{
    if (applications.getPage(identification).isEmpty())
        applications.setPage(identification, attributesPage);
    showPage(identification, applications.getPage(identification));
}

// The one that shows files: this system's own, or else the first; empty when there is none.
QString MainWindow::fileApplication() const
{
    const QString own = QStringLiteral("Vantry");
    QString first;
    for (const auto& application : applications.getApplications()) {
        if (application.identification == own)
            return own;
        first = first.isEmpty() ? application.identification : first;
    }
    return first;
}

// With files the page that shows them, otherwise what each application showed last.
void MainWindow::showFirstPages(bool hasFiles)
{
    const auto& shown = applications.getApplications();
    if (shown.empty())
        return;
    if (hasFiles)
        return applications.setPage(fileApplication(), attributesPage);
    bool isAnyShown = false;
    for (auto application = shown.rbegin(); application != shown.rend(); ++application) {
        const QString page = WindowMemory::getPage(application->identification);
        if (page.isEmpty() || page == attributesPage)
            continue;
        applications.setPage(application->identification, page);
        isAnyShown = true;
    }
    if (!isAnyShown)
        showStartPage();
}

void MainWindow::showPages(const QMap<QString, QString>& pages)
{
    for (const auto& application : applications.getApplications()) {
        const QString page =
            pages.value(application.identification, WindowMemory::getPage(application.identification));
        applications.setPage(application.identification, page.isEmpty() ? QString(attributesPage) : page);
    }
}

bool MainWindow::areFilesShown() const
{
    const auto& shown = applications.getApplications();
    return std::any_of(shown.begin(), shown.end(), [this](const auto& application) {
        return application.main == workArea->currentWidget() &&
               applications.getPage(application.identification) == attributesPage;
    });
}

void MainWindow::showStartPage()
{
    if (!startPage) {
        startPage = new StartPage;
        workArea->addWidget(startPage);
        connect(startPage, &StartPage::chooseRequested, file, &FileMenu::chooseFiles);
        connect(startPage, &StartPage::openRequested, this,
                [this](const QStringList& names) { openFiles(names); });
        connect(startPage, &StartPage::exampleRequested, this, &MainWindow::openExample);
    }
    startPage->refresh();
    workArea->setCurrentWidget(startPage);
    noteShownApplication();
}

} // namespace Vantry
