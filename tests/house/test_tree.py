"""This checkout keeps the rules of the house."""

import os
import pathlib
import unittest

import house_rules

ROOT = pathlib.Path(__file__).resolve().parents[2]


class TestTree(unittest.TestCase):
    maxDiff = None

    def assert_kept(self, breaches: list[str]) -> None:
        self.assertEqual("", "\n".join(breaches))

    def test_the_product_is_where_the_rules_look(self) -> None:
        self.assertTrue((ROOT / "QuillbarKit" / "support").is_dir())
        self.assertTrue((ROOT / "Quillbar" / "main.cpp").is_file())

    def test_includes_point_one_way(self) -> None:
        self.assert_kept(house_rules.include_directions(ROOT))

    def test_support_builds_on_qt_core_alone(self) -> None:
        qt_headers = pathlib.Path(os.environ["QUILLBAR_QT_HEADERS"])
        self.assertTrue((qt_headers / "QtCore" / "QObject").is_file(), qt_headers)
        self.assert_kept(house_rules.support_without_gui(ROOT, qt_headers))

    def test_the_world_is_reached_through_ports(self) -> None:
        self.assert_kept(house_rules.world_through_ports(ROOT))

    def test_no_source_file_is_too_long(self) -> None:
        self.assert_kept(house_rules.file_sizes(ROOT))

    def test_nothing_is_marked_unfinished(self) -> None:
        self.assert_kept(house_rules.nothing_unfinished(ROOT))

    def test_every_module_is_tested_on_each_level(self) -> None:
        self.assert_kept(house_rules.modules_tested(ROOT))

    def test_every_symbol_has_an_icon(self) -> None:
        self.assert_kept(house_rules.symbols_known(ROOT))
        icons = pathlib.Path("/usr/share/bootstrap-icons/svg")
        for line in (ROOT / "QuillbarKit" / "ui" / "symbols.txt").read_text().splitlines():
            if not line.startswith("#"):
                self.assertTrue((icons / f"{line.split()[1]}.svg").is_file(), line)


if __name__ == "__main__":
    unittest.main()
