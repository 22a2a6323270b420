// The matrix kernels' loops for vectors of a given number of floats. Included by one source for each
// instruction set and compiled with that set's options, so that nothing in here may be an inline function of
// another header: the linker could keep the copy that needs the newest machine.
#pragma once

#include "engine/kernels/MatrixKernels.h"

namespace dravik::engine {

// Lanes: floats in a vector. Registers: vectors that the machine can hold.
template <int Lanes, int Registers>
class KernelLoops {
  public:
    static constexpr MatrixKernels table(const char* name) {
        return {name, multiply, addScaled, activate, activateBack, outputErrors, adam, transpose};
    }

  private:
    // Written as the compiler's manual has them: an alias loses such attributes.
    // NOLINTBEGIN(modernize-use-using)
    typedef float Floats __attribute__((vector_size(Lanes * 4)));
    typedef int Wholes __attribute__((vector_size(Lanes * 4)));
    typedef float LooseFloats __attribute__((vector_size(Lanes * 4), aligned(4), may_alias));
    typedef float Four __attribute__((vector_size(16)));
    typedef float LooseFour __attribute__((vector_size(16), aligned(4), may_alias));
    // NOLINTEND(modernize-use-using)

    // Columns of a tile, in vectors, and rows: the tile's sums fill most registers.
    static constexpr int kMostVectors = Registers > 16 ? 5 : 2;
    static constexpr int kMostRows = 6;
    static constexpr int rowsFor(int vectors) { return vectors == 5 ? 5 : kMostRows; }

    static constexpr auto onesThenZeros() {
        struct {
            float values[2 * Lanes];
        } result{};
        for (int i = 0; i < Lanes; ++i) result.values[i] = 1;
        return result;
    }

    static Floats load(const float* from) { return *reinterpret_cast<const LooseFloats*>(from); }
    static void store(float* to, Floats values) { *reinterpret_cast<LooseFloats*>(to) = values; }
    static Floats all(float value) { return Floats{} + value; }

    template <int Rows, int Vectors>
    static void tile(const MatrixProduct& p, std::size_t row, std::size_t column) {
        Floats sums[Rows][Vectors] = {};
        const float* b = p.b + column;
        for (std::size_t part = 0; part < p.partCount; ++part) {
            const float* a = p.a + row * p.aRow + p.parts[part];
            for (std::size_t k = 0; k < p.depth; ++k, a += p.aColumn, b += p.bRow) {
                Floats right[Vectors];
#pragma GCC unroll 8
                for (int v = 0; v < Vectors; ++v) right[v] = load(b + v * Lanes);
#pragma GCC unroll 8
                for (int r = 0; r < Rows; ++r) {
                    const Floats left = all(a[static_cast<std::size_t>(r) * p.aRow]);
#pragma GCC unroll 8
                    for (int v = 0; v < Vectors; ++v) sums[r][v] += left * right[v];
                }
            }
        }
        float* c = p.c + row * p.cRow + column;
#pragma GCC unroll 8
        for (int r = 0; r < Rows; ++r)
#pragma GCC unroll 8
            for (int v = 0; v < Vectors; ++v)
                store(c + static_cast<std::size_t>(r) * p.cRow + v * Lanes, sums[r][v]);
    }

    template <int Rows, int Vectors>
    static void lastRows(const MatrixProduct& p, std::size_t row, std::size_t column) {
        if constexpr (Rows > 0) {
            if (p.rows - row == Rows)
                tile<Rows, Vectors>(p, row, column);
            else
                lastRows<Rows - 1, Vectors>(p, row, column);
        }
    }

    template <int Vectors>
    static void strip(const MatrixProduct& p, std::size_t column) {
        constexpr int rows = rowsFor(Vectors);
        std::size_t row = 0;
        for (; row + rows <= p.rows; row += rows) tile<rows, Vectors>(p, row, column);
        lastRows<rows - 1, Vectors>(p, row, column);
    }

    template <int Vectors>
    static void lastStrip(const MatrixProduct& p, std::size_t column) {
        if constexpr (Vectors > 0) {
            if ((p.columns - column) / Lanes == Vectors)
                strip<Vectors>(p, column);
            else
                lastStrip<Vectors - 1>(p, column);
        }
    }

    static void multiply(const MatrixProduct& p) {
        std::size_t column = 0;
        // Where the widest strips would leave a narrow one, the next narrower fill better.
        while (p.columns - column > kMostVectors * Lanes) {
            constexpr int usual = Registers > 16 ? 4 : kMostVectors;
            strip<usual>(p, column);
            column += usual * Lanes;
        }
        lastStrip<kMostVectors>(p, column);
    }

    static void addScaled(float* to, const float* from, const float* noise, float factor, std::size_t count) {
        for (std::size_t i = 0; i < count; i += Lanes)
            store(to + i, load(from + i) + all(factor) * load(noise + i));
    }

    static void activate(float* values, std::size_t count) {
        for (std::size_t i = 0; i < count; i += Lanes) {
            const Floats value = load(values + i), less = all(0.1f) * value;
            store(values + i, value > less ? value : less);
        }
    }

    static void activateBack(float* slopes, const float* values, std::size_t count) {
        for (std::size_t i = 0; i < count; i += Lanes) {
            const Floats slope = load(slopes + i);
            store(slopes + i, load(values + i) > Floats{} ? slope : all(0.1f) * slope);
        }
    }

    // e to the power of x, x from -80 to 80, to about the last bit.
    static Floats exponential(Floats x) {
        // Adding this number leaves a float's whole part in its lowest bits.
        const Floats shifter = all(12582912.0f);
        const Floats shifted = x * all(1.44269504f) + shifter;
        const Floats whole = shifted - shifter;
        const Floats rest = (x - whole * all(0.693359375f)) - whole * all(-2.12194440e-4f);
        Floats power = all(1.9875691500e-4f);
        power = power * rest + all(1.3981999507e-3f);
        power = power * rest + all(8.3334519073e-3f);
        power = power * rest + all(4.1665795894e-2f);
        power = power * rest + all(1.6666665459e-1f);
        power = power * rest + all(5.0000001201e-1f);
        power = (power * rest) * rest + rest + all(1.0f);
        return reinterpret_cast<Floats>(reinterpret_cast<Wholes>(power) +
                                        (reinterpret_cast<Wholes>(shifted) << 23));
    }

    static float sum(Floats values) {
        float parts[Lanes];
        store(parts, values);
        for (int half = Lanes / 2; half > 0; half /= 2)
            for (int i = 0; i < half; ++i) parts[i] += parts[i + half];
        return parts[0];
    }

    static constexpr auto kOnes = onesThenZeros();

    // Outputs beyond 60 are taken for 60: then no sum of exponentials overflows or vanishes, and none needs
    // the largest output to be found first.
    static float outputErrors(const OutputErrors& e) {
        Floats squares = {};
        float right = 0;
        for (std::size_t row = 0; row < e.rows; ++row) {
            float* outputs = e.outputs + row * e.stride;
            Floats total = {};
            for (std::size_t i = 0; i < e.classes; i += Lanes) {
                Floats value = load(outputs + i);
                value = value < all(60.0f) ? value : all(60.0f);
                value = value > all(-60.0f) ? value : all(-60.0f);
                value = exponential(value);
                if (i + Lanes > e.classes) value *= load(kOnes.values + Lanes - (e.classes - i));
                total += value;
                store(outputs + i, value);
            }
            for (std::size_t i = (e.classes + Lanes - 1) / Lanes * Lanes; i < e.stride; i += Lanes)
                store(outputs + i, Floats{});
            const Floats part = all(1 / sum(total));
            for (std::size_t i = 0; i < e.classes; i += Lanes) {
                const Floats likelihood = load(outputs + i) * part;
                squares += likelihood * likelihood;
                store(outputs + i, likelihood);
            }
            float& wanted = outputs[e.wanted[row]];
            right += 1 - 2 * wanted;
            wanted -= 1;
        }
        const float all = sum(squares) + right;
        return all > 0 ? all : 0;
    }

    // 1 / sqrt(x), x from 1e-30 to 1e30, to five digits: Newton's iteration from a guess that halves the
    // exponent, alike on every machine.
    static Floats reciprocalRoot(Floats x) {
        Floats y = reinterpret_cast<Floats>((Wholes{} + 0x5f3759df) - (reinterpret_cast<Wholes>(x) >> 1));
        const Floats half = all(0.5f) * x;
        y *= all(1.5f) - half * y * y;
        y *= all(1.5f) - half * y * y;
        return y;
    }

    static void adam(const AdamStep& s) {
        const Floats rate = all(s.rate * s.meanCorrection), kept = all(1 - s.rate * s.decay);
        const Floats correction = all(s.squareCorrection);
        for (std::size_t i = 0; i < s.count; i += Lanes) {
            const Floats g = load(s.gradient + i);
            const Floats mean = all(0.9f) * load(s.means + i) + all(0.1f) * g;
            const Floats square = all(0.995f) * load(s.squares + i) + all(0.005f) * g * g;
            store(s.means + i, mean);
            store(s.squares + i, square);
            store(s.weights + i, kept * load(s.weights + i) -
                                     rate * mean * reciprocalRoot(square * correction + all(1e-12f)));
        }
    }

    static void transpose(const float* from, std::size_t fromRow, float* to, std::size_t toRow,
                          std::size_t rows, std::size_t columns) {
        const auto four = [](const float* at) -> Four { return *reinterpret_cast<const LooseFour*>(at); };
        const auto put = [](float* at, Four values) { *reinterpret_cast<LooseFour*>(at) = values; };
        for (std::size_t r = 0; r < rows; r += 4)
            for (std::size_t c = 0; c < columns; c += 4) {
                const float* in = from + r * fromRow + c;
                float* out = to + c * toRow + r;
                const Four a = four(in), b = four(in + fromRow), d = four(in + 2 * fromRow),
                           e = four(in + 3 * fromRow);
                const Four ab = __builtin_shufflevector(a, b, 0, 4, 1, 5),
                           cd = __builtin_shufflevector(a, b, 2, 6, 3, 7),
                           ef = __builtin_shufflevector(d, e, 0, 4, 1, 5),
                           gh = __builtin_shufflevector(d, e, 2, 6, 3, 7);
                put(out, __builtin_shufflevector(ab, ef, 0, 1, 4, 5));
                put(out + toRow, __builtin_shufflevector(ab, ef, 2, 3, 6, 7));
                put(out + 2 * toRow, __builtin_shufflevector(cd, gh, 0, 1, 4, 5));
                put(out + 3 * toRow, __builtin_shufflevector(cd, gh, 2, 3, 6, 7));
            }
    }
};

}  // namespace dravik::engine
