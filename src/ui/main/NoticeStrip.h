#pragma once

#include <functional>
#include <vector>

#include <QFrame>

class QLabel;
class QPushButton;

namespace tessarine
{

/// What a notice is about. There is one notice of each at a time.
enum class NoticeCause {
    Start,   ///< The job of the last session was not read.
    Save,    ///< A project was not saved.
    Kept,    ///< The job was not kept for the next start.
    Open,    ///< A project was not opened.
    Import,  ///< A list was not loaded, or not to its end.
    Export,  ///< A list was not saved.
    Folder,  ///< Folders could not be read.
    Lines,   ///< A list of files could not be read, or has lines that do not end as they should.
    Drop,    ///< What was dropped could not be used.
};

/// A strip that tells what went wrong without stopping anybody: the newest notice, how many others wait behind it, a
/// button that shows the error log where that says more, and one that puts the notice away. Hidden while there is
/// nothing to tell.
class NoticeStrip : public QFrame
{
    Q_OBJECT

public:
    /// Words a notice in the language in force.
    using Wording = std::function<QString()>;

    NoticeStrip();

    /// Tells of something, in place of the notice that there is about the same cause. `isLogged`: the error log knows
    /// more.
    void Tell(NoticeCause cause, bool isLogged, Wording wording);

    /// The cause is over: its notice goes.
    void Over(NoticeCause cause);

    /// Words all of it anew, in the language in force by now.
    void Reword();

    QLabel* const lblNotice;
    QLabel* const lblMoreNotices;
    QPushButton* const cmdErrorLog;     ///< Its click is the window's to answer.
    QPushButton* const cmdCloseNotice;  ///< Puts the newest notice away.

private:
    struct Notice {
        NoticeCause cause;
        bool isLogged;
        Wording wording;
    };

    void Remove(NoticeCause cause);
    void ShowNewest();

    QLabel* const picture_;        // without an objectName, because no language file has a text for it
    std::vector<Notice> notices_;  // the newest last
};

}  // namespace tessarine
