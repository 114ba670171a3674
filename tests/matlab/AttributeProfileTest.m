classdef AttributeProfileTest < matlab.unittest.TestCase
% The module and the functions of the toolbox, which have to be on the path: runtests ('tests/matlab') in MATLAB. In GNU
% Octave tests/octave/+matlab stands in for the class of MATLAB's, and `ctest -R octave.matlab_class` runs this one.

% SPDX-License-Identifier: MIT

  methods (Test)
    function the_module_goes_before_its_help (test)
      test.verifyEqual (exist ('attribute_profile'), 3);
    end

    function results_are_those_of_every_system (test)
      [found, expected] = digests_of_calls ();
      test.verifyEqual (numel (expected), 512);
      test.verifyEqual (found, expected);
    end

    function faults_have_their_texts (test)
      [found, expected] = messages_of_faults ();
      test.verifyEqual (found, expected);
    end

    function calls_leave_no_memory_behind (test)
      [grown, same] = growth_of_calls (256, 145);
      test.verifyTrue (same);
      % What one kind of failing call, of 13, would leave behind in a round: 5 images, and a tree of 1.3 MB for each.
      test.verifyLessThan (median (grown(3:5)), 300);
    end

    function the_code_of_the_user_guide_runs (test)
      [found, expected] = guide_results ();
      test.verifyEqual (found, expected);
    end

    function functions_of_the_toolbox_return_what_they_tell (test)
      [found, expected] = toolbox_results ();
      test.verifyEqual (found, expected);
    end
  end
end
