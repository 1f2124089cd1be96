"""Plots render to PNG files (Agg backend) with something on them."""

import os
import tempfile
import unittest

import k_bond

try:
    import matplotlib
    matplotlib.use("Agg")
    import matplotlib.image
    import matplotlib.pyplot as plt
except ImportError:
    matplotlib = None


@unittest.skipIf(matplotlib is None, "matplotlib not installed")
class Plots(unittest.TestCase):
    def render(self, draw):
        with tempfile.TemporaryDirectory() as tmp:
            path = os.path.join(tmp, "plot.png")
            ax = draw()
            ax.figure.savefig(path, dpi=60)
            plt.close(ax.figure)
            pixels = matplotlib.image.imread(path)
        colours = {tuple(p) for p in pixels.reshape(-1, pixels.shape[-1])[::7].round(2)}
        # A blank or single-line figure has a handful of colours; a drawn
        # curve, tangent, bars and legend have dozens.
        self.assertGreater(len(colours), 30)
        return ax

    def test_price_yield_curve_with_its_duration_tangent(self):
        bond = k_bond.Bond(type="ust", coupon=0.0425, maturity="2034-11-15")
        ax = self.render(lambda: bond.plot_price_yield("2025-01-15", yield_=0.045))
        curve, tangent, point = ax.get_lines()
        # The tangent touches the curve at 4.5 % and lies below it elsewhere
        # (the price is convex in the yield).
        at = list(curve.get_xdata()).index(min(curve.get_xdata(), key=lambda x: abs(x - 4.5)))
        self.assertAlmostEqual(tangent.get_ydata()[at], curve.get_ydata()[at], 9)
        self.assertTrue(all(t <= c + 1e-9 for t, c in zip(tangent.get_ydata(),
                                                          curve.get_ydata())))
        self.assertAlmostEqual(point.get_ydata()[0], bond.price(0.045, "2025-01-15"), 9)

    def test_cash_flow_bars_and_discounted_values(self):
        bond = k_bond.Bond(type="gilt", coupon=0.0425, maturity="2034-12-07")
        ax = self.render(lambda: bond.plot_cashflows("2025-01-15", yield_=0.045))
        flows = bond.cashflows("2025-01-15")
        self.assertEqual(len(ax.patches), 2 * len(flows))  # coupon and principal bars
        present = ax.get_lines()[0].get_ydata()
        self.assertTrue(all(p < f.coupon + f.principal for p, f in zip(present, flows)))


if __name__ == "__main__":
    unittest.main()
