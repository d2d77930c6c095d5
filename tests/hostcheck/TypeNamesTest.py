"""The check of a host knows the names of types that the layer knows."""

import pathlib
import re
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "house"))
import house  # noqa: E402


def names(file, pattern):
    return re.findall(pattern, house.text_of(house.source_root() / file))


class TheNames(house.Check):
    def test_are_those_of_the_layer(self):
        layers = names("propdata/typeinfo/CustomTypeNames.cpp", r'\{L"(\w+)",')
        self.assertIn("VELT_DISTANCE", layers)
        self.assertEqual(layers, names("hostcheck/TypeNames.h", r'L"(\w+)"'))


if __name__ == "__main__":
    unittest.main()
