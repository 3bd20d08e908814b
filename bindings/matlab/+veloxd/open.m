function file = open(path)
%VELOXD.OPEN  Open an .oxd file and read all of it.
%   FILE = VELOXD.OPEN(PATH) gives a veloxd.File. The file on the disk stays as it is until SAVE is called.
%
%   Errors: veloxd:file where the system refuses the file, veloxd:damaged where its content is at fault.
%
%   Example:
%      file = veloxd.open("scan.oxd");
%      z = file.channel("ForwardScan", "Topography").values;
%
%   See also veloxd.create, veloxd.File, veloxd.Channel.
    path = char(path);
    file = veloxd.File(veloxd_mex('open', unicode2native(path, 'UTF-8')), path);
end
