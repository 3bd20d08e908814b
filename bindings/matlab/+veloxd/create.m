function file = create(path)
%VELOXD.CREATE  Make an empty data set.
%   FILE = VELOXD.CREATE(PATH) gives a veloxd.File that SAVE will write to PATH. Nothing is written before.
%
%   See also veloxd.open, veloxd.File.
    path = char(path);
    file = veloxd.File(veloxd_mex('create', unicode2native(path, 'UTF-8')), path);
end
