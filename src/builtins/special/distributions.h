// Densities, distribution functions and their inverses of the normal, exponential and Poisson
// distributions, as plain functions of doubles. What a distribution does not admit gives NaN;
// nothing here reports a fault.
#pragma once

#include <cstdint>

namespace kelo::special {

double normalPdf(double x, double mu, double sigma);  ///< NaN for sigma <= 0
/// NaN for sigma < 0. NOTE: intended: 1 for sigma == 0
double normalCdf(double x, double mu, double sigma);
/// The same of n numbers.
void normalCdf(double* y, const double* x, int64_t n, double mu, double sigma);
double normalInverse(double p, double mu, double sigma);

double exponentialPdf(double x, double mu);  ///< mu: the mean
double exponentialCdf(double x, double mu);
double exponentialInverse(double p, double mu);

/// The probability of x events. 0 for what is no whole number. NOTE: intended: 0 as well for a
/// whole number above 2^24 that single precision does not hold.
double poissonPdf(double x, double lambda);
double poissonCdf(double x, double lambda);
/// The least whole number at which the distribution function passes p.
double poissonInverse(double p, double lambda);

}  // namespace kelo::special
