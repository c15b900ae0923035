// Control chart constants of the relative range W = R / sigma of n independent normal values.
//
// d2(n) is the mean of W and d3(n) its standard deviation (H. L. Harter, Tables of Range and Studentized
// Range, Ann. Math. Statist. 31, 1960), to 21 digits. Published tables round them to three decimals.
#pragma once

namespace engine {

// n from 2 to 20; a subgroup of 1 uses the moving range of two values, so 1 gives the constants of 2.
long double D2(int n);
long double D3(int n);

}  // namespace engine
