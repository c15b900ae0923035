// One graph of a chart page as a recording: its named data sets, its plot area and scale, and what is drawn.
#pragma once

#include <QMap>
#include <QRectF>
#include <QString>
#include <QStringList>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <variant>
#include <vector>

class ChartGraph {
 public:
  struct LineStyle {
    int style = 0;  // 0 solid, 2 dashed
    int width = 0;  // 0 is the thinnest line that reads well, every further one is as much again
    int colour = 0;
  };
  struct TextParameters {
    int colour = 0;
    int font = 16;  // the sans-serif face, the only one
    int size = 6;   // relative to the page
    int style = 0;  // 3 bold
  };
  enum class Alignment { LeftMiddle, RightMiddle, BelowCentred, AboveCentred = 6 };
  enum class Direction { Horizontal, Vertical };

  // Of a horizontal axis, up to the next one. At its start stands its heading where that is not the last one
  // that stands, else its text; headings go first.
  struct Stretch {
    double from = 0;
    QString heading;
    QString text;
  };
  // Ticks from the start of the scale, or at the multiples of the spacing where only some are numbered, with
  // numbers or with the given labels; labels thin out before they touch.
  struct Axis {
    Direction direction = Direction::Horizontal;
    double spacing = 1;
    QStringList labels;  // one for each tick; empty: the numbers
    std::optional<std::pair<double, double>>
        numbered{};  // the first number and the last one; all where not set
    TextParameters labelText;
    QString title;
    TextParameters titleText;
    std::vector<Stretch> stretches{};  // in place of the ticks of a horizontal axis
  };
  // One value per position. A mark other than 0 is shown at its point as a sign with that number, which
  // stands above the sign, or below it where the value is below the middle. A value that is not a number
  // leaves a gap.
  struct Curve {
    QString positions;
    QString values;
    LineStyle line;
    std::vector<std::uint8_t> marks;  // one per value, or empty
    bool marksArePoints = false;      // the sign's number is its position instead
    double middle = 0;
    TextParameters markText;
    struct Letters {
      size_t index;
      QString first, last;
    };
    std::vector<Letters> letters{};  // on plates at points: of what is said elsewhere
  };
  // A line across the whole plot area at the first value of a data set; not drawn outside the scale.
  struct Level {
    Direction direction = Direction::Horizontal;
    QString dataSet;
    LineStyle line;
    bool isFaint = false;  // left out where it would crowd the other levels
  };
  struct Bars {
    QString dataSet;
    double width = 1;  // of a bar, in positions
    int fill = 0;
    int outline = 0;
  };
  // A smooth line over bars, on a rim of paper so that it shows on them too.
  struct Outline {
    QString positions;
    QString values;
    int colour = 0;
  };
  // A pale ground of the plot area between two positions.
  struct Shade {
    double from = 0;
    double to = 0;
    int colour = 0;
  };
  struct LineLabel {
    double value = 0;
    QString name;
    QString number;
  };
  // Names levels at their ends, outside the plot area; the labels of near levels move apart.
  struct LineLabels {
    Direction direction = Direction::Horizontal;  // of the levels
    std::vector<LineLabel> labels;
    TextParameters text;
  };
  // A line of text at a graph-relative point. It never grows wider than its room: it is made smaller, then
  // one of its shorter forms, the longest first, then it is cut short.
  struct Text {
    QPointF position;
    Alignment alignment = Alignment::LeftMiddle;
    QString text;
    TextParameters parameters;
    double maxWidth = 1;  // fraction of the graph
    QStringList shorter{};
  };
  // Lines of texts below each other. Where the graph is too small for all, they move together and their
  // letters get smaller; then lines are left out, those with a text that is cut short and the least important
  // ones, but for the most important ones.
  struct Cell {
    double from = 0;  // fractions across the graph
    double to = 1;
    QString text;
    TextParameters parameters;
    QStringList shorter{};
  };
  struct Line {
    std::vector<Cell> cells;
    double pitch = 0;  // to the middle of the next line
    int importance = 0;
  };
  struct Table {
    double top = 0;  // the middle of the first line
    std::vector<Line> lines;
  };
  using Operation = std::variant<Axis, Level, Bars, Curve, LineLabels, Text, Table, Outline, Shade>;

  explicit ChartGraph(const QRectF& frame, bool bordered = true) : frame_(frame), bordered_(bordered) {}

  void WGDefineDataSetVB(const QString& name, std::vector<double> values) {
    dataSets_[name] = std::move(values);
  }
  void SetPlotArea(double left, double top, double right, double bottom) {
    plotArea_ = QRectF(QPointF(left, top), QPointF(right, bottom));
  }
  // What the plot area's corners stand for: x and y of the lower left one, x and y of the upper right one.
  void ScalePlotArea(double x0, double y0, double x1, double y1) {
    scale_ = QRectF(QPointF(x0, y0), QPointF(x1, y1));
  }
  void Draw(Operation operation) { operations_.push_back(std::move(operation)); }
  void WGBargraph(const QString& dataSet, double width, int fill, int outline) {
    Draw(Bars{dataSet, width, fill, outline});
  }
  // A horizontal axis with one label for each tick.
  void WGLabelAxisStringsVB(const QStringList& labels, double spacing, const TextParameters& labelText,
                            const QString& title, const TextParameters& titleText) {
    Draw(Axis{Direction::Horizontal, spacing, labels, {}, labelText, title, titleText});
  }
  void Title(const QString& text, const TextParameters& parameters) {
    Draw(Text{{0.5, 0.008}, Alignment::BelowCentred, text, parameters, 0.98});
  }

  QRectF Frame() const { return frame_; }
  bool IsBordered() const { return bordered_; }
  QRectF PlotArea() const { return plotArea_; }
  // Left, right: the horizontal ends; top, bottom: the lower and the upper end of the vertical scale.
  QRectF Scale() const { return scale_; }
  // std::out_of_range when it is not defined.
  const std::vector<double>& DataSet(const QString& name) const {
    const auto found = dataSets_.constFind(name);
    if (found == dataSets_.constEnd()) throw std::out_of_range("no data set " + name.toStdString());
    return *found;
  }
  const std::vector<Operation>& Operations() const { return operations_; }

 private:
  QRectF frame_;
  bool bordered_;
  QRectF plotArea_{0, 0, 1, 1};
  QRectF scale_{0, 0, 1, 1};
  QMap<QString, std::vector<double>> dataSets_;
  std::vector<Operation> operations_;
};
