// Included ahead of every source that uses qpdf, under Clang only. qpdf's JSON.hh holds a vector of a type
// that is not complete yet, which Clang 14 refuses in C++20. The kit never uses it, and the headers that it
// does use need the type's name alone: this stands for JSON.hh and takes its include guard.
#pragma once

#define JSON_HH

#include <functional>
#include <list>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

class JSON;
