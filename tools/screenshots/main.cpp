#include <exception>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include "app/GlobalState.h"
#include "app/LanguageText.h"
#include "desktop/DesktopPorts.h"
#include "desktop/OutlinedStyle.h"
#include "desktop/QtMessageBox.h"
#include "i18n/frmChangeLanguage.h"
#include "i18n/QtText.h"
#include "icons/Icons.h"
#include "log/ErrorLog.h"
#include "office/builtin/Provider.h"
#include "platform/Messages.h"
#include "platform/ProgramFolder.h"
#include "shell/frmAbout.h"
#include "support/SampleDecks.h"
#include "Themes.h"
#include "ui/main/frmMain.h"
#include "ui/main/StartCommand.h"
#include "ui/run/frmProcessingDocuments.h"
#include "ui/run/ResultTree.h"

// Shows every window of the program with a job in it, in the languages asked for, light and dark, and takes pictures of
// the screen, window frames and all. QT_SCALE_FACTOR sets the scale.

namespace
{

using namespace tessarine;

std::shared_ptr<OptionSetting> In(std::initializer_list<bool OptionSetting::*> flags)
{
    auto setting = std::make_shared<OptionSetting>();
    for (const auto flag : flags)
        (*setting).*flag = true;
    return setting;
}

void MakeJob()
{
    using S = OptionSetting;
    CurrentProject = std::make_shared<Project>(builtin::CreateProvider());
    IsBuiltInEngine = true;
    FindAndReplaceItems& pairs = *CurrentProject->FindAndReplaceList;
    pairs.Add(u"Fabrikam", u"Contoso", In({&S::InSlides, &S::InShapesAndTextboxes, &S::InNotes, &S::MatchCase}),
              CurrentProject);
    pairs.Add(u"fabrikam.com", u"contoso.com", In({&S::InSlides, &S::InHyperlinkAddresses}), CurrentProject);
    pairs.Add(u"© 2025", u"© 2026", In({&S::InFooter, &S::InSlideMasterPerPresentation}), CurrentProject);
    pairs.Add(u"Team", u"Team North", In({&S::InSlides, &S::MatchWholeWord}), CurrentProject);
    pairs.Add(u"Plan", u"The Plan", In({&S::InSlides}), CurrentProject);
    pairs.Add(u"Müller", u"مولر", In({&S::InBuiltinProperty, &S::InCustomProperties}), CurrentProject);

    ProjectOptions& options = *CurrentProject->options;
    options.FileToProcessFolderPath = u"/home/maria/Presentations/2026/";
    options.Include_Subfolders = true;
    options.BackupMode = true;
    options.KeepOriginalFileDate = true;
    options.RequiredFindAndReplaceCount = true;
    options.RevisionDocumentPropertyName = u"Revision";
    options.RevisionDocumentPropertyIncrimentedBy = u"0.1";
    options.RestartApplicationAfterFiles = 500;
    options.ComaSepAllowedExtensions = u"*.Ppt*";
    CurrentProject->CustomProperies->Add(u"FindAndReplaceFilePath", {});
    CurrentProject->CustomProperies->Add(u"FindAndReplaceListSource", u"INTERNAL");
    CurrentProject->CustomProperies->Add(u"LANG", CurrentLanguageFile);
}

/// Takes pictures of one language on one desktop.
class Camera
{
public:
    explicit Camera(QString prefix) : prefix_(std::move(prefix)) {}

    /// The window, with the frame that the window manager gave it.
    void Take(QWidget& window, const QString& name) const
    {
        constexpr int settled = 250;  // milliseconds, for the window manager
        window.show();
        if (!QTest::qWaitForWindowExposed(&window))
            throw std::runtime_error("a window does not show: is there a display?");
        if (!QTest::qWaitFor([&window] { return window.frameGeometry() != window.geometry(); }))
            throw std::runtime_error("a window gets no frame: is there a window manager?");
        window.raise();
        QTest::qWait(settled);
        const QRect frame = window.frameGeometry();
        const QPixmap picture = window.screen()->grabWindow(0, frame.x(), frame.y(), frame.width(), frame.height());
        const QString file = prefix_ + name + ".png";
        if (!picture.save(file))
            throw std::runtime_error("could not write " + file.toStdString());
    }

private:
    QString prefix_;
};

/// An empty folder whose name looks well in a picture. It is deleted at the end, with all that was put into it.
class SampleFolder
{
public:
    SampleFolder()
    {
        if (!QDir::temp().mkdir(name_))
            throw std::runtime_error("could not make the folder " + Path().toStdString() + ": is it there already?");
    }
    ~SampleFolder() { QDir(Path()).removeRecursively(); }
    SampleFolder(const SampleFolder&) = delete;
    SampleFolder& operator=(const SampleFolder&) = delete;

    QString Path() const { return QDir::temp().filePath(name_); }

private:
    const QString name_ = "Presentations";
};

/// The sample decks, a backup and a second name of one of them, and a file that is none: what a run asks and warns of.
void WriteSamples(const QString& folder)
{
    test::WriteSampleDecks(folder.toStdString());
    const std::filesystem::path decks = folder.toStdString();
    std::filesystem::copy_file(decks / "Quarterly review.pptx", decks / "Quarterly review..bak");
    std::filesystem::create_hard_link(decks / "Quarterly review.pptx", decks / "second name");
    QFile broken(folder + "/Broken.pptx");
    if (!broken.open(QFile::WriteOnly) || broken.write("no presentation") < 0)
        throw std::runtime_error("could not write a broken file");
}

/// While it lives, questions are shown: a picture is taken, and Yes is pressed.
class QuestionCamera
{
public:
    explicit QuestionCamera(const Camera& camera) : camera_(camera)
    {
        before_ = SetMessageBox([this](const Message& message) {
            QTimer::singleShot(0, [this] { TakeAndAgree(); });
            return ShowQtMessageBox(message);
        });
    }
    ~QuestionCamera() { SetMessageBox(before_); }
    QuestionCamera(const QuestionCamera&) = delete;
    QuestionCamera& operator=(const QuestionCamera&) = delete;

    /// Raises what went wrong, or that no question came.
    void Check() const
    {
        if (failure_)
            std::rethrow_exception(failure_);
        if (!hasTaken_)
            throw std::runtime_error("no question was asked");
    }

private:
    /// No failure may leave through the event loop, and the box has to be closed after one too.
    void TakeAndAgree()
    {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        try {
            camera_.Take(*box, "question");
            hasTaken_ = true;
        } catch (const std::exception&) {
            failure_ = std::current_exception();
        }
        box->button(QMessageBox::Yes)->click();
    }

    const Camera& camera_;
    MessageBoxPort before_;
    std::exception_ptr failure_;
    bool hasTaken_ = false;
};

/// Starts a run over the sample decks, with a picture of the question before it.
frmProcessingDocuments& RunOver(frmMain& window, std::int16_t command, const Camera& camera)
{
    const QuestionCamera question(camera);
    window.cmdStartReplacing_Click(command);
    question.Check();
    return frmProcessingDocuments::Instance();
}

void Close(frmProcessingDocuments& run)
{
    run.close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

/// The file of a tree whose path holds a text.
QModelIndex FileIn(const ResultTree& tree, QStringView text)
{
    for (int row = 0; row < tree.model()->rowCount(); ++row)
        if (const QModelIndex index = tree.model()->index(row, 0); index.data().toString().contains(text))
            return index;
    throw std::runtime_error("a file is missing in the results: " + text.toString().toStdString());
}

/// The end of a search and its results: the hits of a pair, then, with the other pairs hidden, those of a file that is
/// written from right to left.
void TakeHits(frmProcessingDocuments& run, const Camera& camera)
{
    camera.Take(run, "find-progress");
    run.findChild<QTabWidget*>("SSTab1")->setCurrentIndex(1);
    ResultTree& tree = *run.trvChangedFiles;
    const QModelIndex file = FileIn(tree, u"Quarterly");
    tree.expand(file);
    tree.setCurrentIndex(tree.model()->index(0, 0, file));
    camera.Take(run, "find-pair");
    run.findChild<QCheckBox*>("chkOnlyWithHits")->setChecked(true);
    tree.setCurrentIndex(FileIn(tree, u"عرض"));
    auto* const hits = run.findChild<QListView*>("lstHits");
    hits->setCurrentIndex(hits->model()->index(1, 0));
    camera.Take(run, "find-file");
}

/// The question before a run over the sample decks, and the window of the run behind its end: the hits of a search,
/// then each tab of a replacement.
void TakeRun(const Camera& camera)
{
    const SampleFolder folder;
    WriteSamples(folder.Path());
    CurrentProject->options->FileToProcessFolderPath = FromQt(folder.Path());

    frmMain window;
    window.show();
    frmProcessingDocuments& search = RunOver(window, StartCommand::Searching, camera);
    TakeHits(search, camera);
    Close(search);

    frmProcessingDocuments& run = RunOver(window, StartCommand::Replacing, camera);
    auto* const tabs = run.findChild<QTabWidget*>("SSTab1");
    run.trvChangedFiles->ExpandAll();
    const QModelIndex file = FileIn(*run.trvChangedFiles, u"Quarterly");
    run.trvChangedFiles->setCurrentIndex(file);
    const char* const names[] = {"run-progress", "run-changed", "run-unchanged", "run-errors"};
    for (int tab = 0; tab < tabs->count(); ++tab) {
        tabs->setCurrentIndex(tab);
        run.trvChangedFiles->scrollTo(file, QAbstractItemView::PositionAtTop);
        camera.Take(run, names[tab]);
    }
    Close(run);
}

void TakeAll(const Camera& camera)
{
    MakeJob();
    {
        frmMain window;
        auto* const tabs = window.findChild<QTabWidget*>("SSTab1");
        const char* const names[] = {"replacement", "files", "options"};
        for (int tab = 0; tab < tabs->count(); ++tab) {
            tabs->setCurrentIndex(tab);
            camera.Take(window, names[tab]);
        }
    }
    TakeRun(camera);
    frmChangeLanguage language;
    camera.Take(language, "language");
    frmAbout about;
    camera.Take(about, "about");
    CurrentProject->FindAndReplaceList.reset();
}

}  // namespace

int main(int argumentCount, char** arguments)
try {
    QApplication application(argumentCount, arguments);
    const QStringList words = QApplication::arguments();
    if (words.size() < 3) {
        std::cerr << "usage: make-screenshots <folder> <language>...\n";
        return 2;
    }
    const QTemporaryDir home;  // nobody's settings show, and none are changed
    for (const char* name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME"})
        qputenv(name, QFile::encodeName(home.path()));
    const DesktopPorts ports;
    SetMessageBox([](const Message&) { return MessageAnswer::Yes; });
    ApplicationDataFolder = FromQt(home.path());
    SetProgramFolder(FromUtf8(TESSARINE_PROGRAM_FOLDER));
    QApplication::setStyle(new OutlinedStyle);  // the application owns it
    QApplication::setWindowIcon(Icon("tessarine"));
    QDir().mkpath(words[1]);

    for (const QString& language : words.mid(2)) {
        CurrentLanguageFile = FromQt(language + ".lng");
        if (GetLngString(u"frmMain", u"mnuFile.caption").empty())
            throw std::runtime_error("no language " + language.toStdString());
        for (const auto& [theme, palette] : {std::pair("light", LightTheme()), std::pair("dark", DarkTheme())}) {
            QApplication::setPalette(palette);
            TakeAll(Camera(words[1] + u'/' + language + '-' + theme + '-'));
        }
    }
    return 0;
} catch (const std::exception& failure) {
    std::cerr << "make-screenshots: " << failure.what() << '\n';
    return 1;
}
