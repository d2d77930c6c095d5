# What people call. Each target installs what it needs first, so a machine with make, bash and apt is enough.
PREFIX ?= /usr/local
SECONDS_PER_TARGET ?= 60

.PHONY: run palette test test-release bench fuzz asan asan-layer tsan libcxx coverage docs install package dist format lint accept-golden clean

run:
	@scripts/install-dependencies build
	@scripts/build release veltprops
	build/release/bin/veltprops sample --force build/release/sample.dxf && build/release/bin/veltprops show build/release/sample.dxf --all

palette:
	@scripts/install-dependencies build desktop
	@scripts/build release veltpalette && build/release/bin/veltpalette

test:
	@scripts/install-dependencies build test docs desktop
	@scripts/build dev && ctest --preset dev

# What only builds that are shipped do: they keep blocks beside the heap, and have another one.
test-release:
	@scripts/install-dependencies build test
	@scripts/build release velt_test_embedded velt_test_contract velt_test_plugins && ctest --preset release -R '^(embedded|contract|plugins)[.]'

bench:
	@scripts/install-dependencies build bench
	@scripts/build release velt_bench && build/release/bin/velt_bench --json build/release/bench.json

fuzz:
	@scripts/install-dependencies build test sanitize
	@scripts/build fuzz && scripts/fuzz build/fuzz $(SECONDS_PER_TARGET)

asan:
	@scripts/install-dependencies build test sanitize
	@scripts/build asan-ubsan && ctest --preset asan-ubsan

asan-layer:
	@scripts/install-dependencies build test sanitize
	@scripts/build asan-ubsan velt_layer_tests && ctest --preset asan-ubsan -L layer

tsan:
	@scripts/install-dependencies build test sanitize
	@scripts/build tsan && ctest --preset tsan

libcxx:
	@scripts/install-dependencies build libcxx
	@scripts/build libcxx velt_layer_tests && ctest --preset libcxx -L layer

coverage:
	@scripts/install-dependencies build test coverage
	@scripts/build coverage && ctest --preset coverage && gcovr -r . --exclude tests build/coverage

docs:
	@scripts/install-dependencies docs
	@mkdir -p build/docs && VELT_DOCS=build/docs doxygen docs/Doxyfile && echo build/docs/index.html: made

install:
	@scripts/install-dependencies build desktop
	@scripts/build release velt_product && cmake --install build/release --prefix $(PREFIX)

package:
	@scripts/install-dependencies build desktop package
	@scripts/build package velt_product && cd build/package && cpack

dist:
	@scripts/dist build

format:
	@scripts/install-dependencies style
	git ls-files '*.h' '*.cpp' | xargs -r clang-format -i

lint:
	@scripts/install-dependencies build test style
	@cmake --preset lint && scripts/lint build/lint

accept-golden:
	@scripts/install-dependencies build test
	@scripts/accept-golden build/dev

clean:
	rm -rf build
