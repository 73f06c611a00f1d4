"""The wheel has a library for one system, but runs in every Python 3."""

from typing import Tuple

from setuptools import setup
from wheel.bdist_wheel import bdist_wheel


class LibraryWheel(bdist_wheel):
    def finalize_options(self) -> None:
        super().finalize_options()
        self.root_is_pure = False

    def get_tag(self) -> Tuple[str, str, str]:
        return "py3", "none", super().get_tag()[2]


setup(cmdclass={"bdist_wheel": LibraryWheel})
