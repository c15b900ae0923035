#include "cli/CsvTable.h"

#include <algorithm>

namespace {

class RowParser {
 public:
  RowParser(const QString& text, CsvTable& table, int line)
      : text_(text), table_(table), line_(line), row_{line, {}} {}

  void Parse() {
    for (at_ = 0; at_ < text_.size(); ++at_) {
      const QChar c = text_[at_];
      if (c == u'\n') {
        EndField();
        EndRow();
      } else if (c == table_.separator) {
        EndField();
      } else if (c == u'"' && field_.text.trimmed().isEmpty()) {
        ReadQuoted();
      } else {
        field_.text += c;
      }
    }
    EndField();
    EndRow();
  }

 private:
  // From the opening quote to the closing one.
  void ReadQuoted() {
    const qsizetype start = at_;
    const int startLine = line_;
    QString quoted;
    for (++at_; at_ < text_.size(); ++at_) {
      const QChar c = text_[at_];
      if (c == u'\n') ++line_;
      if (c != u'"') {
        quoted += c;
      } else if (at_ + 1 < text_.size() && text_[at_ + 1] == u'"') {
        quoted += text_[++at_];
      } else {
        break;
      }
    }
    qsizetype next = at_ + 1;
    while (next < text_.size() && text_[next] == u' ') ++next;
    const bool ends = next >= text_.size() || text_[next] == table_.separator || text_[next] == u'\n';
    const bool isOpen = at_ >= text_.size() || (!ends && line_ > startLine);
    table_.wellFormed = table_.wellFormed && ends && !isOpen;
    if (isOpen && table_.openQuote == 0) table_.openQuote = startLine;
    field_ = ends ? CsvField{quoted, true} : CsvField{text_.mid(start, at_ - start + 1), false};
  }

  void EndField() {
    field_.text = field_.text.trimmed();
    row_.fields.push_back(std::move(field_));
    field_ = {};
  }

  void EndRow() {
    const bool blank = row_.fields.size() == 1 && row_.fields[0].text.isEmpty();
    if (!blank) table_.rows.push_back(std::move(row_));
    row_ = {++line_, {}};
  }

  const QString& text_;
  CsvTable& table_;
  qsizetype at_ = 0;
  int line_;
  CsvField field_;
  CsvRow row_;
};

}  // namespace

CsvTable::CsvTable(const QString& text, QChar fieldSeparator, int firstLine) : separator(fieldSeparator) {
  RowParser(text, *this, firstLine).Parse();
}

bool CsvTable::IsEven() const {
  if (!wellFormed) return false;
  return std::ranges::all_of(
      rows, [&](const CsvRow& row) { return row.fields.size() <= rows.front().fields.size(); });
}

bool CsvRow::IsDividedBetweenDigits() const {
  const auto areDigits = [](const CsvField& left, const CsvField& right) {
    if (left.quoted || right.quoted || left.text.isEmpty() || right.text.isEmpty()) return false;
    return left.text.back().isDigit() && right.text.front().isDigit();
  };
  return std::ranges::adjacent_find(fields, areDigits) != fields.end();
}
