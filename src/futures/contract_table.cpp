#include "futures/contract_table.h"

#include <iterator>

namespace kbond::futures {
namespace {

// code, rule family, contract rule
constexpr ContractEntry kContracts[] = {
    {0, 0, 0},    {1, 0, 1},    {2, 2, 2},    {3, 1, 5},    {4, 3, 10},   {5, 2, 4},
    {6, 2, 11},   {7, 4, 18},   {8, 5, 16},   {9, 5, 17},   {10, 2, 14},  {11, 5, 15},
    {15, 6, 4},   {16, 6, 19},  {17, 6, 20},  {18, 6, 21},  {20, 7, 22},  {22, 2, 3},
    {25, 8, 23},  {26, 8, 24},  {31, 1, 7},   {32, 1, 6},   {33, 1, 8},   {34, 1, 2},
    {35, 1, 3},   {36, 1, 9},   {37, 1, 4},   {40, 9, 25},  {41, 13, 29}, {42, 13, 30},
    {45, 10, 11}, {46, 10, 12}, {47, 10, 13}, {50, 11, 26}, {51, 11, 27}, {55, 12, 28},
    {60, 0, 31},  {61, 0, 32},  {70, 14, 31}, {71, 14, 32},
};

}  // namespace

const ContractEntry* find_contract(int32_t code) noexcept {
  for (const ContractEntry& entry : kContracts) {
    if (entry.code == code) return &entry;
  }
  return nullptr;
}

}  // namespace kbond::futures
