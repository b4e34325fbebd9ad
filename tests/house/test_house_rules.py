"""Each rule of the house catches what it is there for, and lets pass what is right."""

import pathlib
import tempfile
import unittest

import house_rules


class TestHouseRules(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)

    def write(self, path: str, text: str) -> None:
        file = self.root / path
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text, encoding="utf-8")

    def assert_allowed_include(self, path: str, header: str) -> None:
        self.write(path, f"#include {header}\n")
        self.assertEqual([], house_rules.include_directions(self.root))
        (self.root / path).unlink()

    def assert_wrong_include(self, path: str, header: str) -> None:
        self.write(path, f"// first\n#include {header}\n")
        breaches = house_rules.include_directions(self.root)
        self.assertEqual(1, len(breaches), (path, header))
        self.assertTrue(breaches[0].startswith(f"{path}:2: "), breaches)
        (self.root / path).unlink()

    def test_the_arrows_that_are_right_pass(self) -> None:
        self.write("QuillbarKit/AppDelegate.h", "")
        self.write("Quillbar/Updater.h", "")
        for path, header in (
            ("QuillbarKit/support/A.cpp", '"support/B.h"'),
            ("QuillbarKit/platform/A.h", '"support/B.h"'),
            ("QuillbarKit/platform/A.h", '"platform/B.h"'),
            ("QuillbarKit/platform/linux/A.cpp", '"platform/linux/x11/B.h"'),
            ("QuillbarKit/platform/linux/x11/A.cpp", "<xcb/xcb.h>"),
            ("QuillbarKit/platform/linux/dbus/A.cpp", "<QDBusConnection>"),
            ("QuillbarKit/timer/A.cpp", '"support/B.h"'),
            ("QuillbarKit/timer/A.cpp", '"platform/B.h"'),
            ("QuillbarKit/timer/A.cpp", '"timer/B.h"'),
            ("QuillbarKit/timer/A.cpp", '"ui/B.h"'),
            ("QuillbarKit/timer/A.cpp", '"settings/B.h"'),
            ("QuillbarKit/timer/A.cpp", '"shell/NotchModule.h"'),
            ("QuillbarKit/timer/A.cpp", '"moc_A.cpp"'),
            ("QuillbarKit/timer/A.cpp", '"A.moc"'),
            ("QuillbarKit/settings/A.cpp", '"clipboard/detection/ColorParser.h"'),
            ("QuillbarKit/timer/TimerWiring.cpp", '"AppDelegate.h"'),
            ("QuillbarKit/AppDelegate.cpp", '"timer/B.h"'),
            ("QuillbarKit/AppDelegate.cpp", '"timer/TimerWiring.h"'),
            ("Quillbar/main.cpp", '"AppDelegate.h"'),
            ("Quillbar/main.cpp", '"Updater.h"'),
            ("Quillbar/main.cpp", '"platform/linux/B.h"'),
        ):
            with self.subTest(path=path, header=header):
                self.assert_allowed_include(path, header)

    def test_an_arrow_the_wrong_way_is_caught(self) -> None:
        self.write("QuillbarKit/AppDelegate.h", "")
        for path, header in (
            ("QuillbarKit/support/A.h", '"platform/B.h"'),
            ("QuillbarKit/support/A.h", '"timer/B.h"'),
            ("QuillbarKit/platform/A.h", '"platform/linux/B.h"'),
            ("QuillbarKit/platform/A.h", '"shell/B.h"'),
            ("QuillbarKit/platform/linux/x11/A.cpp", '"shell/B.h"'),
            ("QuillbarKit/timer/A.cpp", '"platform/linux/x11/B.h"'),
            ("QuillbarKit/timer/A.cpp", '"AppDelegate.h"'),
            ("QuillbarKit/timer/A.cpp", '"timer/TimerWiring.h"'),
            ("QuillbarKit/AppDelegate.cpp", '"platform/linux/B.h"'),
            ("QuillbarKit/AppDelegate.cpp", '"../Quillbar/Updater.h"'),
        ):
            with self.subTest(path=path, header=header):
                self.assert_wrong_include(path, header)

    def test_a_service_that_includes_another_is_caught(self) -> None:
        for path, header in (
            ("QuillbarKit/timer/A.cpp", '"media/B.h"'),
            ("QuillbarKit/timer/A.cpp", '"shell/PanelState.h"'),
            ("QuillbarKit/sync/A.cpp", '"clipboard/detection/ClipContentDetector.h"'),
            ("QuillbarKit/settings/A.cpp", '"clipboard/history/ClipboardWatcher.h"'),
        ):
            with self.subTest(path=path, header=header):
                self.assert_wrong_include(path, header)

    def test_a_desktop_library_outside_its_place_is_caught(self) -> None:
        for header in (
            "<xcb/xcb.h>",
            "<X11/Xlib.h>",
            "<wayland-client.h>",
            "<QtDBus/QDBusConnection>",
            "<QDBusInterface>",
            "<gio/gio.h>",
            "<glib.h>",
            "<pulse/pulseaudio.h>",
        ):
            for path in ("platform/A.h", "support/A.h", "media/A.cpp", "AppDelegate.cpp"):
                with self.subTest(path=path, header=header):
                    self.assert_wrong_include(f"QuillbarKit/{path}", header)

    def test_a_bare_include_is_caught(self) -> None:
        self.write("QuillbarKit/timer/B.h", "")
        self.assert_wrong_include("QuillbarKit/timer/A.cpp", '"B.h"')

    def test_a_folder_without_a_place_is_caught(self) -> None:
        self.write("QuillbarKit/helpers/A.h", "")
        self.write("QuillbarKit/platform/mac/A.h", "")
        self.assertEqual(2, len(house_rules.include_directions(self.root)))

    def test_an_include_in_a_comment_is_none(self) -> None:
        self.write("QuillbarKit/support/A.h", '/*\n#include "timer/B.h"\n*/\n')
        self.assertEqual([], house_rules.include_directions(self.root))

    def test_qt_gui_in_support_is_caught(self) -> None:
        self.write("qt/QtCore/QObject", "")
        self.write("qt/QtGui/QImage", "")
        self.write("QuillbarKit/ui/A.cpp", "#include <QImage>\n")
        self.write(
            "QuillbarKit/support/A.cpp", "#include <QObject>\n#include <QtCore/QObject>\n#include <mutex>\n"
        )
        self.assertEqual([], house_rules.support_without_gui(self.root, self.root / "qt"))
        for header in ("QImage", "QtGui/QImage", "QtQml/QQmlEngine", "QtQuick/QQuickItem"):
            self.write("QuillbarKit/support/A.cpp", f"#include <{header}>\n")
            self.assertEqual(
                [f"QuillbarKit/support/A.cpp:1: <{header}> is not of Qt Core"],
                house_rules.support_without_gui(self.root, self.root / "qt"),
            )

    def test_reaching_past_the_ports_is_caught(self) -> None:
        for code in (
            "auto now = QDateTime::currentDateTime();",
            "auto now = QDateTime::currentDateTimeUtc();",
            "auto now = std::chrono::system_clock::now();",
            "QTimer::singleShot(0, this, f);",
            "#include <QTimer>",
            "QProcess process;",
            "auto bus = QDBusConnection::sessionBus();",
            'auto home = qgetenv("HOME");',
            'auto home = qEnvironmentVariable("HOME");',
            'if (qEnvironmentVariableIsSet("HOME")) {}',
            'auto path = u"/usr/bin/open"_qs;',
            'auto path = QStringLiteral("file:///etc/passwd");',
            'auto path = "/proc";',
        ):
            for path in ("QuillbarKit/media/A.cpp", "QuillbarKit/AppDelegate.cpp", "Quillbar/main.cpp"):
                with self.subTest(path=path, code=code):
                    self.write(path, f"\n{code}\n")
                    breaches = house_rules.world_through_ports(self.root)
                    self.assertEqual(1, len(breaches), breaches)
                    self.assertTrue(breaches[0].startswith(f"{path}:2: "), breaches)
                    (self.root / path).unlink()

    def test_support_and_platform_reach_the_world(self) -> None:
        for path in ("support/A.cpp", "platform/A.h", "platform/linux/A.cpp"):
            self.write(f"QuillbarKit/{path}", 'QTimer timer; auto path = "/proc/stat"; qgetenv("HOME");\n')
        self.assertEqual([], house_rules.world_through_ports(self.root))

    def test_words_and_other_paths_are_no_breach(self) -> None:
        self.write(
            "QuillbarKit/media/A.cpp",
            '// No QTimer here, and no "/usr/bin".\n'
            'auto text = "QTimer"; auto route = "/api/get"; auto file = ":/icons/tray.svg"; auto root = "/";\n'
            "auto big = 1'000'000; MyQTimerLike other;\n",
        )
        self.assertEqual([], house_rules.world_through_ports(self.root))

    def test_a_file_that_is_too_long_is_caught(self) -> None:
        for path in ("QuillbarKit/ui/A.qml", "tests/unit/A.cpp", "scripts/a.py"):
            self.write(path, "\n" * house_rules.LINES_AT_MOST)
        self.write("docs/long.md", "\n" * 1000)
        self.write("build/release/moc_A.cpp", "\n" * 1000)
        self.assertEqual([], house_rules.file_sizes(self.root))
        self.write("QuillbarKit/ui/A.qml", "\n" * (house_rules.LINES_AT_MOST + 1))
        self.assertEqual(["QuillbarKit/ui/A.qml:401: more than 400 lines"], house_rules.file_sizes(self.root))

    def test_a_mark_of_unfinished_work_is_caught(self) -> None:
        self.write("docs/a.md", "All done. A todo list.\n")
        self.write("tests/data/seeds/page.html", "TO" + "DO")
        self.assertEqual([], house_rules.nothing_unfinished(self.root))
        for mark in ("TO" + "DO", "FIX" + "ME"):
            self.write("docs/a.md", f"Text\n{mark}: more\n")
            self.assertEqual([f"docs/a.md:2: {mark}"], house_rules.nothing_unfinished(self.root))

    def test_a_module_without_tests_is_found_on_each_level(self) -> None:
        self.write("QuillbarKit/lamp/NightLampModule.h", "class NightLampModule final : public NotchModule\n")
        self.assertEqual(3, len(house_rules.modules_tested(self.root)))
        self.write("tests/unit/lamp/LampServiceTest.cpp", "")
        self.write("tests/views/NightLampViewsTest.cpp", "")
        breaches = house_rules.modules_tested(self.root)
        self.assertEqual(1, len(breaches), breaches)
        self.assertIn("tests/desktop/test_night_lamp.py", breaches[0])
        self.write("tests/desktop/test_night_lamp.py", "")
        self.assertEqual([], house_rules.modules_tested(self.root))

    def test_a_symbol_without_an_icon_is_found(self) -> None:
        self.write("QuillbarKit/ui/symbols.txt", "# names\nlamp.fill lightbulb-fill\n")
        self.write("QuillbarKit/lamp/Good.qml", 'Symbol {\n    name: "lamp.fill"\n}\n')
        self.assertEqual([], house_rules.symbols_known(self.root))
        self.write("QuillbarKit/lamp/A.qml", 'Symbol {\n    x: 1\n    name: on ? "lamp.fill" : "lamp"\n}\n')
        self.write("QuillbarKit/lamp/B.qml", 'LampControl {\n    symbol: "lamp.off"\n}\n')
        self.write(
            "QuillbarKit/lamp/C.h",
            'QString iconSystemName() const override { return QStringLiteral("lamp.on"); }\n',
        )
        breaches = house_rules.symbols_known(self.root)
        self.assertEqual(3, len(breaches), breaches)


if __name__ == "__main__":
    unittest.main()
