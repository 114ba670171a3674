% SPDX-License-Identifier: MIT
% Stands in for MATLAB's class of this name: as much of it as tests/matlab/AttributeProfileTest.m asks for.
classdef TestCase < handle
  methods
    function verifyEqual (test, found, expected)
      assert (found, expected);
    end

    function verifyTrue (test, found)
      assert (found, true);
    end

    function verifyLessThan (test, found, limit)
      assert (found < limit, '%g is not less than %g', found, limit);
    end
  end
end
