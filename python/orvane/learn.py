# SPDX-License-Identifier: Apache-2.0
"""Estimators for scikit-learn: formulas, support vector machine, trees, networks.

They need scikit-learn (``pip install 'orvane[learn]'``) and follow its rules: ``fit``, ``predict``, ``score``,
``get_params``, pickling. A long fit stops on Ctrl-C with the best model so far.

>>> from orvane import learn
>>> x = np.linspace(0.1, 3.0, 40).reshape(-1, 1)
>>> model = learn.FormulaRegressor(max_terms=3, degree=2).fit(x, 2.0 / (1.0 + x[:, 0] ** 2))
>>> model.score(x, 2.0 / (1.0 + x[:, 0] ** 2)) > 0.999999
True
"""
from __future__ import annotations

from itertools import combinations_with_replacement
from typing import Any, Sequence

import numpy as np
from numpy.typing import ArrayLike, NDArray

from . import capi
from ._check import Floats, choice, integer, real
from ._core import ffi, lib
from ._handle import Handle
from ._network import Graph
from ._run import beside

try:
    from sklearn.base import BaseEstimator, ClassifierMixin, RegressorMixin
    from sklearn.utils.multiclass import check_classification_targets
    from sklearn.utils.validation import check_is_fitted, validate_data
except ImportError as _missing:
    raise ImportError("orvane.learn needs scikit-learn 1.6 or later: pip install 'orvane[learn]'") from _missing

_KERNELS = {
    "linear": 0, "gauss": 1, "polynomial": 2, "laplace": 3, "tanh": 4, "rational": 5, "multiquadric": 6,
    "inverse_multiquadric": 7, "circular": 8, "spherical": 9, "cauchy": 10,
}
_TRANSFORMS = {"none": 0, "exp": 1, "ln": 2, "sqrt": 3}
_Side = list[tuple[float, tuple[int, ...]]]  # coefficients, and the columns that each multiplies
_Part = tuple[_Side, _Side, tuple[int, float, float]]
# How a fitted value goes back: as text, and over arrays.
_BACK: dict[int, tuple[str, Any]] = {
    1: ("ln({})", np.log), 2: ("exp({})", np.exp), 3: ("({})^2", np.square), 100: ("sin({})", np.sin),
    102: ("tanh({})", np.tanh),
}
_ACTIVATIONS = {"tanh": 66, "relu": 78, "sigmoid": 77, "gelu": 87, "selu": 86, "softplus": 80, "mish": 91, "sin": 61}


def _double(array: Floats) -> Any:
    return ffi.from_buffer("double[]", array.reshape(-1))


class _Model(BaseEstimator):  # type: ignore[misc]
    """Checks of the data that all estimators share; the library's objects stay out of pickles."""

    def __getstate__(self) -> dict[str, Any]:
        state = dict(super().__getstate__())
        state.pop("_native", None)
        return state

    def _features(self, x: ArrayLike) -> Floats:
        check_is_fitted(self)
        return np.ascontiguousarray(validate_data(self, x, reset=False, dtype=np.float64))

    def _training(self, x: ArrayLike, y: ArrayLike, numeric: bool) -> tuple[Floats, Any]:
        features, target = validate_data(self, x, y, dtype=np.float64, y_numeric=numeric, ensure_min_samples=2)
        return np.ascontiguousarray(features), target


class _Binary(ClassifierMixin, _Model):  # type: ignore[misc]
    """A classifier of two classes."""

    classes_: NDArray[Any]

    def __sklearn_tags__(self) -> Any:
        tags = super().__sklearn_tags__()
        tags.classifier_tags.multi_class = False
        return tags

    def _signs(self, y: Any) -> Floats:
        check_classification_targets(y)
        self.classes_, places = np.unique(y, return_inverse=True)
        if len(self.classes_) > 2:
            raise ValueError("Only binary classification is supported. The type of the target is multiclass.")
        if len(self.classes_) < 2:
            raise ValueError("Classifier can't train when only one class is present.")
        return np.where(places == 1, 1.0, -1.0)

    def _named(self, positive: NDArray[np.bool_]) -> NDArray[Any]:
        found: NDArray[Any] = self.classes_[positive.astype(int)]
        return found


class SVMClassifier(_Binary):
    """Support vector machine for two classes, by sequential minimal optimisation.

    Parameters
    ----------
    kernel : str, optional
        linear, gauss, polynomial, laplace, tanh, rational, multiquadric, inverse_multiquadric, circular, spherical or
        cauchy.
    C : float, optional
        Bound of the multipliers.
    parameters : (float, float, float), optional
        p0, p1, p2 of the kernel.
    rate : float, optional
        Share of right samples at which the training ends; above 1 it goes on to the optimum.
    max_steps : int, optional
        Joint steps; 0 for no limit.

    Examples
    --------
    >>> from orvane.learn import SVMClassifier
    >>> SVMClassifier().fit([[0.0], [1.0], [4.0], [5.0]], [0, 0, 1, 1]).predict([[0.5], [4.5]])
    array([0, 1])
    """

    def __init__(self, kernel: str = "gauss", C: float = 10.0, parameters: Sequence[float] = (1.0, 0.0, 2.0),
                 rate: float = 1.01, max_steps: int = 1000000) -> None:
        self.kernel, self.C, self.parameters, self.rate, self.max_steps = kernel, C, parameters, rate, max_steps

    def fit(self, X: ArrayLike, y: ArrayLike) -> "SVMClassifier":
        """Trains on samples and labels."""
        features, target = self._training(X, y, False)
        self._x, self._y = features, self._signs(target)
        machine = self._machine(trained=False)
        pointer = machine.pointer
        lib.svm_limit(pointer, real(self.rate, "rate"), integer(self.max_steps, "max_steps", 0), 10**9)
        self.converged_, self.outcome_ = beside(lambda: bool(lib.svm_solve(pointer)), lambda: lib.svm_stop(pointer))
        self.multipliers_ = np.zeros(len(features))
        lib.svm_getA(pointer, _double(self.multipliers_))
        self.intercept_ = float(lib.svm_getB(pointer))
        self._weights = np.zeros(features.shape[1])
        lib.svm_getW(pointer, _double(self._weights))
        self.support_ = np.flatnonzero(self.multipliers_ > 0)
        self._native = machine
        return self

    def _machine(self, trained: bool = True) -> Handle:
        machine = Handle(lib.svm_create())
        pointer, shape = machine.pointer, self._x.shape
        parameters = np.array([*self.parameters, 0.0, 0.0, 0.0][:3], np.float64)
        lib.svm_setXDim(pointer, shape[1])
        lib.svm_setType(pointer, choice(self.kernel, "kernel", _KERNELS))
        lib.svm_setOther(pointer, _double(parameters), real(self.C, "C", 0.0))
        lib.svm_setData(pointer, _double(self._x), _double(self._y), shape[0])
        if trained:
            lib.svm_setA(pointer, _double(self.multipliers_), shape[0])
            lib.svm_setB(pointer, self.intercept_)
            if self.kernel == "linear":
                lib.svm_setW(pointer, _double(self._weights), shape[1])
        return machine

    def decision_function(self, X: ArrayLike) -> Floats:
        """f(x): positive for the second class."""
        features = self._features(X)
        if not hasattr(self, "_native"):
            self._native = self._machine()
        pointer, start = self._native.pointer, int(features.ctypes.data)
        predict, step = lib.svm_predict, features.strides[0]
        return np.array([predict(pointer, ffi.cast("double*", start + i * step), False) for i in range(len(features))])

    def predict(self, X: ArrayLike) -> NDArray[Any]:
        """Classes."""
        return self._named(self.decision_function(X) > 0)


class _Tree(_Model):
    """A tree grows the same from the same data: a pickle keeps the samples and grows it again."""

    def _grow(self, labels: Floats, classes: bool) -> Handle:
        tree = Handle(lib.cart_Create())
        pointer = tree.pointer
        limits = (integer(self.min_samples, "min_samples", 0, 2**31 - 1), real(self.min_gap, "min_gap"),
                  real(self.min_score, "min_score"), integer(self.max_depth, "max_depth", 0, 255))
        with _table(self._x) as rows, _table(labels.reshape(-1, 1)) as column:
            lib.cart_SetData(pointer, rows.pointer, column.pointer, ffi.NULL, classes)
        lib.cart_SetLimitCondition(pointer, *limits)
        beside(lambda: lib.cart_Train(pointer), lambda: lib.cart_Stop(pointer))
        return tree

    def _answers(self, X: ArrayLike, classes: bool) -> Floats:
        features = self._features(X)
        if not hasattr(self, "_native"):
            self._native = self._grow(self._y, classes)
        pointer, start = self._native.pointer, int(features.ctypes.data)
        predict, step = lib.cart_Predict, features.strides[0]
        return np.array([predict(pointer, ffi.cast("double*", start + i * step)) for i in range(len(features))])


    def export_text(self, feature_names: Sequence[str] | None = None) -> str:
        """The tree as text: a line a split or leaf, indented by depth."""
        check_is_fitted(self)
        if not hasattr(self, "_native"):
            self._native = self._grow(self._y, isinstance(self, ClassifierMixin))
        names = list(feature_names) if feature_names is not None else [f"x{i}" for i in range(self._x.shape[1])]
        if len(names) != self._x.shape[1]:
            raise ValueError(f"feature_names: must be {self._x.shape[1]} names, not {len(names)}")
        lines: list[str] = []
        rows = np.arange(len(self._x))
        self._tell(lib.cart_GetRoot(self._native.pointer), rows, names, 0, lines)
        return "\n".join(lines)

    def _tell(self, node: Any, rows: NDArray[np.intp], names: list[str], depth: int, lines: list[str]) -> None:
        indent = "|   " * depth
        left, right = (ffi.NULL,) * 2 if node == ffi.NULL else (
            lib.cart_BaseNode_GetLeftNode(node), lib.cart_BaseNode_GetRightNode(node))
        if left == ffi.NULL and right == ffi.NULL:
            answer = self.predict(self._x[rows[:1]])[0] if rows.size else "nothing"
            lines.append(f"{indent}{answer if isinstance(answer, str) else f'{answer:.6g}'} ({rows.size} samples)")
            return
        column, limit = lib.cart_BaseNode_GetCompareIndex(node), float(lib.cart_BaseNode_GetCompareReal(node))
        below = self._x[rows, column] < limit
        for child, sign, part in ((left, "<", rows[below]), (right, ">=", rows[~below])):
            if child != ffi.NULL:
                lines.append(f"{indent}{names[column]} {sign} {limit:.6g}")
                self._tell(child, part, names, depth + 1, lines)


def _table(values: Floats) -> Handle:
    table = Handle(lib.api_Data2D_Create(*values.shape))
    lib.api_Data2D_SetValue(table.pointer, _double(np.ascontiguousarray(values)))
    return table


class TreeClassifier(_Binary, _Tree):
    """Decision tree for two classes.

    Parameters
    ----------
    max_depth : int, optional
    min_samples : int, optional
        Fewer samples make a leaf.
    min_gap : float, optional
        Neighbouring values closer than this give no threshold.
    min_score : float, optional
        A best split whose score is below makes a leaf; 0 makes every split.

    Examples
    --------
    >>> from orvane.learn import TreeClassifier
    >>> TreeClassifier().fit([[0.0], [1.0], [4.0], [5.0]], ["a", "a", "b", "b"]).predict([[0.5], [4.5]])
    array(['a', 'b'], dtype='<U1')
    """

    def __init__(self, max_depth: int = 6, min_samples: int = 2, min_gap: float = 0.0, min_score: float = 0.0) -> None:
        self.max_depth, self.min_samples, self.min_gap, self.min_score = max_depth, min_samples, min_gap, min_score

    def fit(self, X: ArrayLike, y: ArrayLike) -> "TreeClassifier":
        """Grows the tree."""
        self._x, target = self._training(X, y, False)
        self._y = (self._signs(target) > 0).astype(np.float64)
        self._native = self._grow(self._y, True)
        return self

    def predict(self, X: ArrayLike) -> NDArray[Any]:
        """Classes."""
        return self._named(self._answers(X, True) > 0)


class TreeRegressor(RegressorMixin, _Tree):  # type: ignore[misc]
    """Regression tree; parameters as of :class:`TreeClassifier`.

    Examples
    --------
    >>> from orvane.learn import TreeRegressor
    >>> tree = TreeRegressor().fit([[0.0], [1.0], [4.0], [5.0]], [1.0, 1.0, 3.0, 3.0])
    >>> tree.predict([[0.5], [4.5]])
    array([1., 3.])
    >>> print(tree.export_text())
    x0 < 2.5
    |   1 (2 samples)
    x0 >= 2.5
    |   3 (2 samples)
    """

    def __init__(self, max_depth: int = 6, min_samples: int = 2, min_gap: float = 0.0, min_score: float = 0.0) -> None:
        self.max_depth, self.min_samples, self.min_gap, self.min_score = max_depth, min_samples, min_gap, min_score

    def fit(self, X: ArrayLike, y: ArrayLike) -> "TreeRegressor":
        """Grows the tree."""
        self._x, target = self._training(X, y, True)
        self._y = np.ascontiguousarray(target, np.float64)
        self._native = self._grow(self._y, False)
        return self

    def predict(self, X: ArrayLike) -> Floats:
        """Mean label of the leaf of each row."""
        return self._answers(X, False)


_FEW = 256  # rows up to which a step takes them all


class _Network(_Model):
    """Standardised features, a dense network, Adam."""

    def __init__(self, hidden: Sequence[int] = (16,), activation: str = "tanh", steps: int = 4000, batch: int | None = None,
                 rate: float = 0.01, weight_decay: float = 0.0, seed: int = 0, progress: bool = False) -> None:
        self.hidden, self.activation, self.steps, self.batch = hidden, activation, steps, batch
        self.rate, self.weight_decay, self.seed, self.progress = rate, weight_decay, seed, progress

    def _learn(self, x: Floats, y: Floats) -> None:
        self._centre, self._scale = x.mean(axis=0), x.std(axis=0)
        self._scale[self._scale < 1e-12] = 1.0
        self._sizes = (x.shape[1], *(integer(size, "hidden", 1, 10**6) for size in self.hidden), y.shape[1])
        self._native = self._graph()
        self.outcome_ = self._native.train(
            np.ascontiguousarray((x - self._centre) / self._scale), np.ascontiguousarray(y),
            integer(self.steps, "steps", 1, 2**31), self._rows(len(x)),
            real(self.rate, "rate", 0.0), real(self.weight_decay, "weight_decay"),
            integer(self.seed, "seed", 0, 2**32 - 1), self.progress)
        self.variables_ = self._native.variables

    def _rows(self, count: int) -> int:
        if self.batch is None:
            return count if count <= _FEW else 32
        return integer(self.batch, "batch", 1, 2**31)

    def _graph(self) -> Graph:
        return Graph(self._sizes, choice(self.activation, "activation", _ACTIVATIONS))

    def _outputs(self, X: ArrayLike) -> Floats:
        features = self._features(X)
        if not hasattr(self, "_native"):
            self._native = self._graph()
            self._native.variables = self.variables_
        return self._native.run(np.ascontiguousarray((features - self._centre) / self._scale))


class NetworkRegressor(RegressorMixin, _Network):  # type: ignore[misc]
    """Dense network for real targets.

    Parameters
    ----------
    hidden : sequence of int, optional
        Sizes of the hidden layers.
    activation : str, optional
        tanh, relu, sigmoid, gelu, selu, softplus, mish or sin.
    steps : int, optional
        Steps of Adam.
    batch : int, optional
        Rows of a step; without it all of up to 256 rows, otherwise 32.
    rate, weight_decay : float, optional
    seed : int, optional
        Of the generator of the first weights. With all rows in a step the same seed gives the same network. Otherwise
        the library takes the rows in an order of the system's choice after the first round, and two fits differ a little.
    progress : bool, optional
        Shows a tqdm bar.

    Examples
    --------
    >>> from orvane.learn import NetworkRegressor
    >>> x = np.linspace(-1, 1, 30).reshape(-1, 1)
    >>> NetworkRegressor(steps=2000).fit(x, x[:, 0] ** 2).score(x, x[:, 0] ** 2) > 0.99
    True
    """

    def fit(self, X: ArrayLike, y: ArrayLike) -> "NetworkRegressor":
        """Trains the network."""
        features, target = self._training(X, y, True)
        values = np.asarray(target, np.float64).reshape(len(features), -1)[:, :1]
        self._middle, self._range = float(values.mean()), float(values.std()) or 1.0
        self._learn(features, (values - self._middle) / self._range)
        return self

    def predict(self, X: ArrayLike) -> Floats:
        """Values of the network."""
        found: Floats = self._outputs(X)[:, 0] * self._range + self._middle
        return found


class NetworkClassifier(ClassifierMixin, _Network):  # type: ignore[misc]
    """Dense network for classes; parameters as of :class:`NetworkRegressor`.

    Examples
    --------
    >>> from orvane.learn import NetworkClassifier
    >>> NetworkClassifier(steps=500).fit([[0.0], [1.0], [4.0], [5.0]], [0, 0, 1, 1]).predict([[0.5], [4.5]])
    array([0, 1])
    """

    classes_: NDArray[Any]

    def fit(self, X: ArrayLike, y: ArrayLike) -> "NetworkClassifier":
        """Trains the network."""
        features, target = self._training(X, y, False)
        check_classification_targets(target)
        self.classes_, places = np.unique(target, return_inverse=True)
        if len(self.classes_) < 2:
            raise ValueError("Classifier can't train when only one class is present.")
        self._learn(features, np.where(np.arange(len(self.classes_)) == places[:, None], 1.0, -1.0))
        return self

    def predict(self, X: ArrayLike) -> NDArray[Any]:
        """The class of the largest output."""
        places = self._outputs(X).argmax(axis=1)
        found: NDArray[Any] = self.classes_[places]
        return found


def terms_of(features: Floats, degree: int) -> tuple[list[tuple[int, ...]], Floats]:
    """Products of up to `degree` columns: the columns that each multiplies, and a row of values each."""
    places = [p for d in range(1, degree + 1) for p in combinations_with_replacement(range(features.shape[1]), d)]
    return places, np.ascontiguousarray([features[:, list(p)].prod(axis=1) for p in places])


class FormulaRegressor(RegressorMixin, _Model):  # type: ignore[misc]
    """Searches a formula for data: a quotient of sums of products of the features.

    Parameters
    ----------
    max_terms : int, optional
        Parameters of the formula, the constant among them.
    degree : int, optional
        Features in one product.
    target : {"none", "exp", "ln", "sqrt"}, optional
        What is searched for instead of y.
    time : float, optional
        Seconds after which the search ends.
    progress : bool, optional
        Shows a tqdm bar.
    stages : int, optional
        Above 1 the formula is a sum: each stage searches what those before it leave of y, under several targets of its
        own. `target` is then not used.

    Attributes
    ----------
    formula_ : str
        The formula as text.
    numerator_, denominator_ : list of (float, tuple of int)
        Coefficients and the columns that each term multiplies; no columns for a constant.

    Examples
    --------
    >>> from orvane.learn import FormulaRegressor
    >>> x = np.arange(1.0, 9.0).reshape(-1, 1)
    >>> FormulaRegressor(max_terms=2, degree=1).fit(x, 3 * x[:, 0] + 2).formula_
    '2 + 3*x0'
    >>> model = FormulaRegressor(max_terms=2, degree=1, stages=2).fit(x, np.exp(x[:, 0] / 8))
    >>> model.score(x, np.exp(x[:, 0] / 8)) > 0.999
    True
    """

    formula_: str
    numerator_: _Side
    denominator_: _Side

    def __init__(self, max_terms: int = 3, degree: int = 2, target: str = "none", time: float | None = None,
                 progress: bool = False, stages: int = 1) -> None:
        self.max_terms, self.degree, self.target = max_terms, degree, target
        self.time, self.progress, self.stages = time, progress, stages

    def fit(self, X: ArrayLike, y: ArrayLike) -> "FormulaRegressor":
        """Searches the formula."""
        features, target = self._training(X, y, True)
        target = np.ascontiguousarray(target, np.float64)
        places, terms = terms_of(features, integer(self.degree, "degree", 1, 8))
        code = choice(self.target, "target", _TRANSFORMS)
        size = integer(self.max_terms, "max_terms", 1, 64)
        self._parts: list[_Part] = []
        if integer(self.stages, "stages", 1, 10**6) > 1:
            return self._in_stages(places, terms, target, size)
        with Handle(lib.api_ES_Create()) as search:
            pointer = search.pointer
            for term in terms:
                lib.api_ES_AddX(pointer, _double(term), term.size)
            lib.api_ES_SetY(pointer, _double(target), target.size)
            lib.api_ES_SetLimitCondition(pointer, -1.0, 2.0, 0)  # nothing is listed: the best one is wanted
            for budget in range(2, size + 1):
                _, self.outcome_ = beside(
                    lambda: lib.api_ES_Search(pointer, budget, capi.ES_KIND_RATIONAL, code),
                    lambda: lib.api_ES_Stop(pointer), seconds=self.time, progress=self.progress, title="formula",
                    state=lambda: (0.0, f"{lib.api_ES_GetSearchNum(pointer)} formulas"))
                if self.outcome_ != "finished":
                    break
            info = ffi.new("double[7]")
            best = lib.api_ES_GetBestResult(pointer, info)
            self.searched_ = int(lib.api_ES_GetSearchNum(pointer))
            self._take(best, info, places, target)
        self._parts = [(self.numerator_, self.denominator_, self._map)]
        return self

    def _in_stages(self, places: list[tuple[int, ...]], terms: Floats, target: Floats, size: int) -> "FormulaRegressor":
        with Handle(lib.api_AutoES_Create()) as search:
            pointer = search.pointer
            for term in terms:
                lib.api_AutoES_AddX(pointer, _double(term), term.size)
            lib.api_AutoES_SetY(pointer, _double(target), target.size)
            lib.api_AutoES_SetLimitCondition(pointer, 1e-20 * float((target**2).sum()), 1.0, 0)
            _, self.outcome_ = beside(
                lambda: lib.api_AutoES_Search(pointer, size, self.stages), lambda: lib.api_AutoES_Stop(pointer),
                seconds=self.time, progress=self.progress, title="formula",
                state=lambda: (0.0, f"{lib.api_AutoES_GetSearchNum(pointer)} formulas"))
            info = ffi.new("double[7]")
            texts: list[str] = []
            while (stage := lib.api_AutoES_GetResult(pointer, len(texts), info)) != ffi.NULL:
                self._take(stage, info, places, target)
                self._parts.append((self.numerator_, self.denominator_, self._map))
                texts.append(self.formula_)
            if not texts:
                self._take(ffi.NULL, info, places, target)
                return self
            self.error_, self.searched_ = float(lib.api_AutoES_GetError(pointer)), int(lib.api_AutoES_GetSearchNum(pointer))
        self.formula_ = " + ".join(f"({words})" if len(texts) > 1 else words for words in texts)
        return self

    def _take(self, best: Any, info: Any, places: list[tuple[int, ...]], target: Floats) -> None:
        if best == ffi.NULL:
            self.numerator_, self.denominator_ = [(float(target.mean()), ())], [(1.0, ())]
            self._map, self.error_ = (0, 0.0, 1.0), float(((target - target.mean()) ** 2).sum())
        else:
            n = int(info[2])
            above, below = ffi.new("double[]", n + 2), ffi.new("double[]", n + 2)
            numerator, denominator = ffi.new("int32_t[]", n + 1), ffi.new("int32_t[]", n + 1)
            lib.api_ES_GetResultForTwoIndex(best, above, numerator, below, denominator)
            self.numerator_ = _side(above, numerator, places)
            self.denominator_ = _side(below, denominator, places)
            self._map, self.error_ = (int(info[1]), float(info[3]), float(info[4])), float(info[5])
        text = _text(self.numerator_)
        if len(self.denominator_) > 1:
            text = f"({text})/({_text(self.denominator_)})"
        kind, offset, scale = self._map
        if kind:
            inverse = _BACK[kind][0].format(text)
            text = f"({inverse} - {offset:.6g})/{scale:.6g}"
        self.formula_ = text

    def predict(self, X: ArrayLike) -> Floats:
        """Values of the formula; NaN where it has none."""
        features = self._features(X)
        total = np.zeros(len(features))
        for numerator, denominator, (kind, offset, scale) in self._parts or [(self.numerator_, self.denominator_, self._map)]:
            above, below = (sum((c * features[:, list(p)].prod(axis=1) for c, p in side), np.zeros(len(features)))
                            for side in (numerator, denominator))
            with np.errstate(all="ignore"):
                value = above / below
                total += ((_BACK[kind][1](value) if kind else value) - offset) / scale
        return total


def _side(coefficients: Any, terms: Any, places: list[tuple[int, ...]]) -> _Side:
    values: list[float] = []
    while coefficients[len(values)] < 1e300:
        values.append(float(coefficients[len(values)]))
    side: _Side = [(values[-1], ())]
    return side + [(value, places[terms[i]]) for i, value in enumerate(values[:-1])]


def _text(side: _Side) -> str:
    parts = []
    for coefficient, columns in side:
        names = [f"x{c}" + (f"^{columns.count(c)}" if columns.count(c) > 1 else "") for c in sorted(set(columns))]
        if abs(coefficient) > 1e-12 or len(side) == 1:
            parts.append("*".join([f"{coefficient:.6g}", *names]))
    return " + ".join(parts).replace("+ -", "- ") or "0"
