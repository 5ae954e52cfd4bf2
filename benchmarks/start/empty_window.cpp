#include <QApplication>
#include <QMainWindow>
#include <QTreeView>

// The least that a desktop program with a tree does until its window is there.
int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    QMainWindow window;
    window.setCentralWidget(new QTreeView);
    window.resize(1100, 720);
    window.show();
    return QApplication::exec();
}
