// A PostgreSQL server of the test program's own: in a temporary folder, on a local socket, started when first
// needed and stopped at the end.
#pragma once

#include <gtest/gtest.h>

#include <QString>

namespace TestServer {

// The address of a new, empty database; empty where no server can be had: then a test skips itself. Its user
// "kestrel" may do everything; "guarded" needs the password "let me in"; "reader" and "writer" have no rights
// yet.
QString NewDatabase();

// The same database by another user, or with another option.
QString As(const QString& user, const QString& address);

// As when the power fails; and on again. Every connection is lost.
void Restart();

inline constexpr auto missing = "no PostgreSQL server (package postgresql) to test with";

}  // namespace TestServer

// For what holds of a database of either kind.
enum class Place { File, Server };

#define ON_BOTH(Fixture)                                                             \
  INSTANTIATE_TEST_SUITE_P(On, Fixture, testing::Values(Place::File, Place::Server), \
                           [](const auto& place) { return place.param == Place::File ? "File" : "Server"; })
