#include "screens/NoteForm.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/DataObjectFunctions.h"
#include "core/GlobalFunctions.h"
#include "core/Trap.h"
#include "platform/language/LocalTimes.h"
#include "screens/Controls.h"
#include "screens/Help.h"
#include "screens/ReadOnly.h"
#include "texts/ChartWords.h"
#include "texts/NoteWords.h"

using namespace Qt::StringLiterals;
using MessageBox::Answer;

NoteForm::NoteForm(const CData& dataSet, const StatPage& page, int point, QWidget* parent)
    : QDialog(parent), data_(dataSet) {
  Trap(u"NoteForm::Form_Load"_s, [&] {
    BuildControls();
    Tell(page, point);
    ReadOnly::RestWithBoxes(*this, {u"cmdSave"_s, u"cmdRemove"_s});
    InstallHelpKey(this, HelpTopics::Notes);
  });
}

void NoteForm::BuildControls() {
  setObjectName(u"NoteForm"_s);
  setWindowTitle(Words::Note::title());
  setModal(true);
  setSizeGripEnabled(true);
  lblPoint = TextLabel(u"lblPoint"_s, this);
  lblPoint->setFont(HeadingFont(*this));
  lblTaken = TextLabel(u"lblTaken"_s, this);
  lblSamples = TextLabel(u"lblSamples"_s, this);
  cboNote = Named(new QComboBox(this), u"cboNote"_s);
  cboNote->setToolTip(Words::Note::which());
  cboNote->setAccessibleName(Words::Note::which());
  txtNote = Named(new QPlainTextEdit(this), u"txtNote"_s);
  txtNote->setTabChangesFocus(true);
  auto* caption = new QLabel(Words::Note::caption(), this);
  caption->setBuddy(txtNote);
  lblNews = TextLabel(u"lblNews"_s, this);
  cmdRemove = PlainButton(u"cmdRemove"_s, this, Words::Note::remove(), Words::Note::removeTip());
  cmdSave = PlainButton(u"cmdSave"_s, this, Words::Note::save(), Words::Note::saveTip());
  auto* cmdCancel = PlainButton(u"cmdCancel"_s, this, Words::Note::cancel());

  auto* buttons = new QHBoxLayout;
  buttons->addWidget(cmdRemove);
  buttons->addStretch();
  buttons->addWidget(cmdSave);
  buttons->addWidget(cmdCancel);
  auto* layout = new QVBoxLayout(this);
  for (QWidget* row : std::initializer_list<QWidget*>{lblPoint, lblTaken, lblSamples, cboNote, caption})
    layout->addWidget(row);
  layout->addWidget(txtNote, 1);
  layout->addWidget(lblNews);
  layout->addLayout(buttons);
  const int em = fontMetrics().height();
  // A wrapped text claims no room of its own in the window around it.
  lblNews->setMinimumHeight(2 * fontMetrics().lineSpacing());
  resize(QSize(em * 28, em * 20).boundedTo(RoomFor(*this)));
  txtNote->setFocus();
  connect(cmdSave, &QPushButton::clicked, this, &NoteForm::Save);
  connect(cmdRemove, &QPushButton::clicked, this, [this] { Write({}); });
  connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(cboNote, &QComboBox::activated, this, [this](int which) { Show(notes_[size_t(which)]); });
  connect(txtNote, &QPlainTextEdit::textChanged, this,
          [this] { cboNote->setEnabled(Typed() == seen_.trimmed()); });
}

// Where other samples of the point have notes already, these are the ones.
void NoteForm::Tell(const StatPage& page, int point) {
  sample_ = page.FirstSampleOf(point) - 1;
  lblPoint->setText(Words::Note::heading(point));
  const QString taken = TakenText(page.Trace(), point);
  lblTaken->setText(taken);
  lblTaken->setVisible(!taken.isEmpty());
  const QStringList samples = page.SamplesOf({GraphId::XBar, point, 0, {}, {}, false});
  lblSamples->setText(Words::Chart::samples(samples.join(u"  "_s)));
  for (const LetteredNote& note : page.NotesOn(point)) {
    notes_.push_back(*note.note);
    cboNote->addItem(Words::Note::line(note.letter, NotedText(*note.note)));
  }
  cboNote->setVisible(notes_.size() > 1);
  cmdRemove->setEnabled(!notes_.empty());
  if (!notes_.empty()) Show(notes_.front());
}

void NoteForm::Show(const Trace::Note& note) {
  sample_ = note.sample;
  seen_ = note.text;
  lblNews->setText(Words::Note::writtenBy(NotedText(note)));
  txtNote->setPlainText(seen_);
  txtNote->moveCursor(QTextCursor::End);
}

QString NoteForm::Typed() const { return txtNote->toPlainText().trimmed(); }

void NoteForm::Save() {
  if (Typed() == seen_.trimmed()) return QDialog::reject();  // nothing to write
  Write(Typed());
}

void NoteForm::Write(const QString& text) {
  Trap(u"NoteForm::Write"_s, [&] {
    using Outcome = Library::Noted::Outcome;
    const auto noted = DataObjectFunctions::SetNote(data_, sample_, seen_, text);
    if (!noted) return;
    if (noted->outcome == Outcome::Written) return accept();
    if (noted->outcome == Outcome::Gone) {
      cmdSave->setEnabled(false);
      cmdRemove->setEnabled(false);
      return lblNews->setText(Words::Note::gone());
    }
    seen_ = noted->theirs.text;
    cmdRemove->setEnabled(!seen_.isEmpty());
    lblNews->setText(seen_.isEmpty() ? Words::Note::theirsRemoved()
                                     : Words::Note::theirs(NotedText(noted->theirs), seen_));
  });
}

void NoteForm::reject() {
  if (cmdSave->isEnabled() && Typed() != seen_.trimmed()) {
    const Answer answer = QCGlobalFunctions::PromptForChanges();
    if (answer == Answer::Cancel) return;
    if (answer == Answer::Yes) return Save();
  }
  QDialog::reject();
}

// The box keeps Enter for a new line, and leaves Ctrl+Enter.
void NoteForm::keyPressEvent(QKeyEvent* event) {
  const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (!isEnter) return QDialog::keyPressEvent(event);
  if (auto* button = qobject_cast<QPushButton*>(focusWidget()))
    button->click();
  else
    cmdSave->click();
}
