#pragma once

#include <exception>
#include <string>

namespace DatabaseFailure {

/// What failed, fit for a log: the database library's own words would repeat the values of the statement.
std::string words(const std::exception& failure);

}
