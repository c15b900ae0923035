#include "platform/ado/ServerAddress.h"

#include <QRegularExpression>
#include <QStringList>
#include <QUrl>
#include <utility>

#include "platform/error/Error.h"

using namespace Qt::StringLiterals;

namespace {

const QRegularExpression& Scheme() {
  static const QRegularExpression scheme(u"^postgres(ql)?://"_s, QRegularExpression::CaseInsensitiveOption);
  return scheme;
}

bool IsSecret(const QString& keyword) { return keyword.contains(u"password"_s, Qt::CaseInsensitive); }

class Parser {
 public:
  explicit Parser(const QString& text)
      : text_(text), rest_(text.mid(Scheme().match(text).capturedLength())) {}

  std::map<QString, QString> Parse() {
    // Of a password with a / or a ? of its own no other part is made.
    const qsizetype authorityEnd = rest_.indexOf(QRegularExpression(u"[/?]"_s));
    if (authorityEnd >= 0 && rest_.mid(authorityEnd).contains(u'@') &&
        rest_.left(authorityEnd).contains(u':'))
      RefusePassword();
    const auto [path, options] = Divided(rest_, u'?');
    const auto [authority, database] = Divided(path, u'/');
    const qsizetype at = authority.lastIndexOf(u'@');
    if (at >= 0) {
      const QString user = authority.left(at);
      if (user.contains(u':')) RefusePassword();
      Keep(u"user"_s, user);
    }
    ParseHosts(authority.mid(at + 1));
    Keep(u"dbname"_s, database);
    for (const QString& option : options.split(u'&', Qt::SkipEmptyParts)) ParseOption(option);
    return parts_;
  }

 private:
  static std::pair<QString, QString> Divided(const QString& text, QChar divider) {
    const qsizetype at = text.indexOf(divider);
    return at < 0 ? std::pair(text, QString()) : std::pair(text.left(at), text.mid(at + 1));
  }

  [[noreturn]] void Refuse(const QString& reason) const {
    const QString shown = ServerAddress::WithoutPassword(text_);
    throw InputError(u"%1: %2"_s.arg(shown, reason), shown);
  }

  [[noreturn]] void RefusePassword() const {
    Refuse(
        u"an address holds no password, since others could read it; keep it in ~/.pgpass, in a service "
        u"file or in the environment variable PGPASSWORD"_s);
  }

  QString Decoded(const QString& text) const {
    static const QRegularExpression wrong(u"%(?![0-9A-Fa-f]{2})|%00"_s);
    if (text.contains(wrong)) Refuse(u"a % in an address is followed by two hexadecimal digits"_s);
    return QString::fromUtf8(QByteArray::fromPercentEncoding(text.toUtf8()));
  }

  void Keep(const QString& keyword, const QString& value) {
    if (!value.isEmpty()) parts_[keyword] = Decoded(value);
  }

  // Several, divided by commas, are tried in their order; an IPv6 address stands in brackets.
  void ParseHosts(const QString& hosts) {
    QStringList names, ports;
    static const QRegularExpression host(u"^(?:\\[([^\\]]*)\\]|([^:\\[\\]]*))(?::([0-9]*))?$"_s);
    for (const QString& one : hosts.split(u',')) {
      const auto match = host.match(one);
      const QString port = match.captured(3);
      if (!match.hasMatch()) Refuse(u"behind a host there is a colon and a port, or nothing"_s);
      if (!port.isEmpty() && (port.toInt() < 1 || port.toInt() > 65535))
        Refuse(u"%1 is no port; a port is a number from 1 to 65535"_s.arg(port));
      names << match.captured(1) + match.captured(2);
      ports << port;
    }
    if (names.size() > 1 || !names.front().isEmpty()) Keep(u"host"_s, names.join(u','));
    if (ports.join(QString()).size() > 0) Keep(u"port"_s, ports.join(u','));
  }

  void ParseOption(const QString& option) {
    const auto [name, value] = Divided(option, u'=');
    const QString keyword = Decoded(name);
    if (IsSecret(keyword)) RefusePassword();
    if (keyword.isEmpty() || !option.contains(u'='))
      Refuse(u"\"%1\" is no option with a value"_s.arg(option));
    if (keyword.compare(u"ssl"_s, Qt::CaseInsensitive) == 0 && value == u"true"_s)
      Keep(u"sslmode"_s, u"require"_s);
    else
      Keep(keyword, value);
  }

  const QString text_;
  const QString rest_;
  std::map<QString, QString> parts_;
};

}  // namespace

bool ServerAddress::IsOne(const QString& text) { return Scheme().match(text).hasMatch(); }

ServerAddress ServerAddress::Parse(const QString& text) { return {Parser(text).Parse()}; }

QString ServerAddress::WithoutPassword(const QString& text) {
  const qsizetype scheme = Scheme().match(text).capturedLength();
  QString rest = text.mid(scheme);
  if (const qsizetype at = rest.lastIndexOf(u'@'); at >= 0) {
    const qsizetype colon = rest.indexOf(u':');
    if (colon >= 0 && colon < at) rest.remove(colon, at - colon);
  } else if (!rest.contains(u'[')) {
    static const QRegularExpression noPort(u":(?![0-9]{1,5}([,/?]|$))[^,/?]*"_s);  // whose host is missing
    rest.remove(noPort);
  }
  return text.left(scheme) + rest.section(u'?', 0, 0);
}

QString ServerAddress::Text() const {
  const auto encoded = [](const QString& part) { return QString::fromLatin1(QUrl::toPercentEncoding(part)); };
  QStringList options;
  const bool areSeveral = Part(u"host"_s).contains(u',');
  for (const auto& [keyword, value] : parts) {
    const bool stands = keyword == u"user"_s || keyword == u"dbname"_s ||
                        (!areSeveral && (keyword == u"host"_s || keyword == u"port"_s));
    if (!stands && !value.isEmpty()) options << encoded(keyword) + u'=' + encoded(value);
  }
  QString text = u"postgresql://"_s;
  if (!Part(u"user"_s).isEmpty()) text += encoded(Part(u"user"_s)) + u'@';
  if (!areSeveral) {
    const QString host = Part(u"host"_s);
    text += host.contains(u':') ? u'[' + host + u']' : encoded(host);
    if (!Part(u"port"_s).isEmpty()) text += u':' + encoded(Part(u"port"_s));
  }
  if (!Part(u"dbname"_s).isEmpty()) text += u'/' + encoded(Part(u"dbname"_s));
  return options.isEmpty() ? text : text + u'?' + options.join(u'&');
}

QString ServerAddress::Part(const QString& keyword) const {
  const auto found = parts.find(keyword);
  return found == parts.end() ? QString() : found->second;
}
